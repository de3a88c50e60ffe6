#include "shapes/selection_marks.h"

#include <algorithm>
#include <deque>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "connect/host_queries.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

/// A selected shape and the shape whose text shows that; for a Task its description, for others the same one.
struct Selected {
  Shape shape;
  Shape part;
  bool isMarked = false;
};

struct RefHash {
  std::size_t operator()(const ObjectRef& object) const { return object.id ^ (object.part * 0x9E3779B97F4A7C15u); }
};

/// Null for a shape that gets no mark.
Shape markedPartOf(const Shape& shape) {
  if (shape.Data1() == marks::detail || isSubTaskBox(shape)) return shape;
  if (!IsTask(shape)) return {};
  const Shapes members = shape.Shapes();
  return members.Count() >= taskMember::descriptionBox ? members.Item(taskMember::descriptionBox) : Shape();
}

bool setMark(const Shape& part, const char* background) { return part.Cells("TextBkgnd").FormulaForce(background); }

}  // namespace

struct SelectionMarks {
  struct OfWindow {
    Window window;
    Document document;
    std::vector<Selected> selected;
  };
  std::vector<OfWindow> windows;

  /// Shapes that were deleted with their mark. An undo or redo brings them back with it and raises no event, so each
  /// change of a selection tries them again.
  struct Deleted {
    Shape part;
    Document document;
  };
  std::deque<Deleted> deleted;
  static constexpr std::size_t mostDeleted = 1000;

  unsigned turn = 0;  ///< one more at each change: a handler of a mark's own change may select other shapes

  OfWindow& of(const Window& window, const Document& document) {
    const auto found = std::ranges::find(windows, window, &OfWindow::window);
    OfWindow& entry = found != windows.end() ? *found : windows.emplace_back(OfWindow{window, {}, {}});
    entry.document = document;
    return entry;
  }

  void remember(const Deleted& shape) {
    deleted.push_back(shape);
    if (deleted.size() > mostDeleted) deleted.pop_front();
  }
};

void markSelection(dsrVisioConnect& connect, const Window& window, const Document& document) {
  if (!isMap(document)) return;
  if (!connect.globalSelectionObj) connect.globalSelectionObj = std::make_shared<SelectionMarks>();
  const std::shared_ptr<SelectionMarks> state = connect.globalSelectionObj;
  const unsigned turn = ++state->turn;
  const std::vector<Selected> former = std::exchange(state->of(window, document).selected, {});
  const std::deque<SelectionMarks::Deleted> deleted = std::exchange(state->deleted, {});

  // What was selected before is not looked at again: selecting many shapes one by one raises an event for each.
  std::unordered_map<ObjectRef, const Selected*, RefHash> known;
  for (const Selected& each : former) known.emplace(each.shape.ref(), &each);
  std::vector<Selected> selected, toMark;
  std::unordered_set<ObjectRef, RefHash> marked;
  const Selection selection = window.Selection();
  selection.SetIterationMode(visio::selectModeSkipSuper);
  for (const Shape& shape : selection.all()) {
    const auto before = known.find(shape.ref());
    Selected each = before != known.end() ? *before->second : Selected{shape, markedPartOf(shape)};
    if (!each.part) continue;
    const bool isTask = !(each.part == shape);
    // The context menu is for one moment; the Task would flash.
    const bool getsMark = !(isTask && connect.flag_right);
    if (getsMark) marked.insert(each.part.ref());
    if (getsMark && !each.isMarked) toMark.push_back(each);
    each.isMarked = getsMark;
    selected.push_back(each);
  }
  state->of(window, document).selected = std::move(selected);

  const auto unmark = [&](const SelectionMarks::Deleted& shape) {
    if (!marked.contains(shape.part.ref()) && !setMark(shape.part, "0")) state->remember(shape);
  };
  for (const SelectionMarks::Deleted& shape : deleted) unmark(shape);
  for (const Selected& each : former) unmark({each.part, document});
  for (const Selected& each : toMark) {
    if (state->turn != turn) return;
    setMark(each.part, "6");
  }
}

void forgetSelection(dsrVisioConnect& connect, const Document& document) {
  if (!connect.globalSelectionObj) return;
  std::erase_if(connect.globalSelectionObj->windows, [&](const auto& each) { return each.document == document; });
  std::erase_if(connect.globalSelectionObj->deleted, [&](const auto& each) { return each.document == document; });
}

}  // namespace quorvel::addin
