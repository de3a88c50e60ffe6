#include "shapes/paste_batch.h"

#include <algorithm>
#include <utility>

#include "base/ask_again.h"
#include "connect/host_queries.h"
#include "shapes/task_count.h"
#include "sheets/page_walk.h"

namespace quorvel::addin {

namespace {

void discardAnswers(dsrVisioConnect& connect, const Document& document) {
  connect.batchDocument = document;
  connect.batchShapes.clear();
  connect.flagShapeAdded = true;
  connect.timeUnitsChecked = false;
  connect.flagTimeUnitAbbr = false;
  connect.flagFeqAbbr_1 = false;
  connect.flagFeqAbbr_2 = false;
  connect.flagFeqAbbrNew = false;
}

bool holds(const std::vector<Shape>& shapes, const Shape& shape) {
  return std::ranges::find(shapes, shape) != shapes.end();
}

}  // namespace

void beginPasteBatch(dsrVisioConnect& connect, const Window& window, const Document& document) {
  if (connect.shapesBeingAdded > 0 || !isMap(document)) return;
  discardAnswers(connect, document);
  // A deletion that is still pending has selected the one shape it asks about.
  const bool deletionPending = connect.DeleteShape && window.Selection().Count() == 1;
  if (!deletionPending) connect.DeleteShape = connect.applyToAll = false;
  connect.deletion = nullptr;
}

void joinPasteBatch(dsrVisioConnect& connect, const Document& document) {
  if (!(connect.batchDocument == document)) discardAnswers(connect, document);
}

void joinPasteBatch(dsrVisioConnect& connect, const Shape& copy, const Page& page) {
  const Document document = askAgain([&] { return page.Document(); });
  if (holds(connect.batchShapes, copy)) return;
  if (holds(connect.nestedBatch.batchShapes, copy)) {
    static_cast<PasteBatch&>(connect) = connect.nestedBatch;
    return;
  }
  discardAnswers(connect, document);
  const Window window = askAgain([&] { return windowOf(connect, document); });
  if (askAgain([&] { return window.Page(); }) == page)
    connect.batchShapes = everyItem(askAgain([&] { return window.Selection(); }));
  if (!holds(connect.batchShapes, copy)) connect.batchShapes = {copy};
  connect.batchTasks = TaskCount(connect.batchShapes);
}

void deleteRefusedShape(dsrVisioConnect& connect, const Shape& shape) {
  const bool outer = std::exchange(connect.deletesRefusedShapes, true);
  shape.Delete();
  connect.deletesRefusedShapes = outer;
}

void deletePastedShapes(dsrVisioConnect& connect) {
  // The list itself may be replaced by what a deletion causes.
  const std::vector<Shape> pasted = connect.batchShapes;
  for (const Shape& shape : pasted) deleteRefusedShape(connect, shape);
}

bool areAllTasksOfPage(const dsrVisioConnect& connect, const Page& page) {
  return TaskCount(page.Shapes().all()) == TaskCount(connect.batchShapes);
}

}  // namespace quorvel::addin
