#include "sheets/shape_classes.h"

#include <algorithm>

#include "sheets/page_walk.h"

namespace quorvel::addin {

namespace {

schema::ShapeClass classOf(const Shape& shape) { return schema::classOfMaster(shape.Master().Name().or_({})); }

}  // namespace

std::string classNameOf(const Shape& shape) {
  const std::string name = shape.Master().Name().or_({});
  return std::string(schema::firstPieceOf(name));
}

bool IsTask(const Shape& shape) { return classOf(shape) == schema::ShapeClass::Task; }

bool IsTaskLink(const Shape& shape) { return classOf(shape) == schema::ShapeClass::TaskLink; }

bool IsProcessConnector(const Shape& shape) { return classOf(shape) == schema::ShapeClass::ProcessConnector; }

bool isTopLevel(const Shape& shape) { return shape && !shape.Parent(); }

bool isWholeTask(const Shape& shape) { return IsTask(shape) && isTopLevel(shape); }

bool isSubTaskBox(const Shape& shape) {
  return shape.Data1() == marks::subTaskBox || shape.Name() == marks::subTaskBox;
}

bool containProcessConectorOrSubtask(const Selection& selection) {
  askAgain([&] { return selection.SetIterationMode(visio::selectModeSkipSuper); });
  return std::ranges::any_of(everyItem(selection), [](const Shape& shape) {
    return askAgain([&] { return IsProcessConnector(shape) || isSubTaskBox(shape); });
  });
}

bool FnDiffrentShape(const Selection& selection) {
  const std::vector<Shape> members = selection.all();
  return std::ranges::any_of(members,
                             [&](const Shape& shape) { return classNameOf(shape) != classNameOf(members.front()); });
}

}  // namespace quorvel::addin
