#include "shapes/paste_batch.h"

#include "addin/host_queries.h"

namespace quorvel::addin {

void beginPasteBatch(dsrVisioConnect& connect) {
  if (!isInitialized(connect)) return;
  connect.flagShapeAdded = true;
  if (!isQuorvelDocument(connect)) return;
  connect.flagTimeUnitAbbr = false;
  connect.flagFeqAbbr_1 = false;
  connect.flagFeqAbbr_2 = false;
  connect.flagFeqAbbrNew = false;
  // A deletion that is still pending has selected the one shape it asks about.
  const bool deletionPending = connect.DeleteShape && connect.gvsoApp.ActiveWindow().Selection().Count() == 1;
  if (!deletionPending) connect.DeleteShape = false;
}

}  // namespace quorvel::addin
