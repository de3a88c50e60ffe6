#include "shapes/shape_added.h"

#include <utility>

#include "base/ask_again.h"
#include "connect/host_queries.h"
#include "schema/cells.h"
#include "shapes/copied_shapes.h"
#include "shapes/first_drop.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

bool isSwitchedOn(const Document& document) {
  return document.DocumentSheet().Cells(schema::documentCells::isInitialized).Result(visio::unitsNone) != 0;
}

class BeingAdded {
 public:
  explicit BeingAdded(dsrVisioConnect& connect) : connect_(connect) { ++connect_.shapesBeingAdded; }
  ~BeingAdded() { --connect_.shapesBeingAdded; }
  BeingAdded(const BeingAdded&) = delete;
  BeingAdded& operator=(const BeingAdded&) = delete;

 private:
  dsrVisioConnect& connect_;
};

}  // namespace

void gvsoApp_ShapeAdded(dsrVisioConnect& connect, const Shape& shape, const Page& page) {
  // A copy that is not handled keeps the ID of its original, so refused questions are repeated.
  const Document document = askAgain([&] { return page.Document(); });
  if (!askAgain([&] { return isMap(document); }) || !askAgain([&] { return isSwitchedOn(document); })) return;
  // The copy that undoes the deletion of a Task must keep its ID and cells.
  if (std::exchange(connect.flagRestoringTask, false)) return;

  const BeingAdded adding(connect);
  const Maybe<bool> wasHereBefore = askAgain([&] { return shape.CellExists(schema::shapeCells::alreadyAdded, 1); });
  if (wasHereBefore == true) copied(connect, shape, page);
  if (wasHereBefore == false) firstDrop(connect, shape, page);
  // It does not change when the shape is renumbered or renamed, so a later reader can find the shape; a copy gets its
  // own.
  if (IsTask(shape) || IsTaskLink(shape) || IsProcessConnector(shape)) shape.UniqueID(visio::uniqueIdGetOrMake);
}

}  // namespace quorvel::addin
