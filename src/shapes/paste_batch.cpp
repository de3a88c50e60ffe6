#include "shapes/paste_batch.h"

#include "connect/host_queries.h"

namespace quorvel::addin {

namespace {

void discardAnswers(dsrVisioConnect& connect, const Document& document) {
  connect.batchDocument = document;
  connect.flagTimeUnitAbbr = false;
  connect.flagFeqAbbr_1 = false;
  connect.flagFeqAbbr_2 = false;
  connect.flagFeqAbbrNew = false;
}

}  // namespace

void beginPasteBatch(dsrVisioConnect& connect, const Window& window, const Document& document) {
  if (!isInitialized(document)) return;
  connect.flagShapeAdded = true;
  if (!hasQuorvelTemplate(document)) return;
  discardAnswers(connect, document);
  // A deletion that is still pending has selected the one shape it asks about.
  const bool deletionPending = connect.DeleteShape && window.Selection().Count() == 1;
  if (!deletionPending) connect.DeleteShape = false;
}

void joinPasteBatch(dsrVisioConnect& connect, const Document& document) {
  if (connect.batchDocument == document) return;
  connect.flagShapeAdded = true;
  discardAnswers(connect, document);
}

}  // namespace quorvel::addin
