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
  bool isHidden = false;  ///< its mark is off while the drawing is saved
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

constexpr int markedBackground = 6;

bool setMark(const Shape& part, bool on) {
  return part.Cells("TextBkgnd").FormulaForce(on ? std::to_string(markedBackground) : "0");
}

}  // namespace

struct SelectionMarks {
  struct OfWindow {
    Window window;
    Document document;
    std::vector<Selected> selected;
    std::unordered_set<ObjectRef, RefHash> marked;  ///< the parts of those that have their mark
  };
  std::vector<OfWindow> windows;

  /// Shapes that have a mark and are not selected, which each change of a selection tries to unmark: those that were
  /// deleted with it, because an undo or redo brings them back and raises no event, and copies of marked ones.
  struct Unselected {
    Shape part;
    Document document;
  };
  std::deque<Unselected> unselected;
  static constexpr std::size_t mostUnselected = 1000;

  unsigned turn = 0;  ///< one more at each change: a handler of a mark's own change may select other shapes

  OfWindow& of(const Window& window, const Document& document) {
    const auto found = std::ranges::find(windows, window, &OfWindow::window);
    OfWindow& entry = found != windows.end() ? *found : windows.emplace_back(OfWindow{window, {}, {}, {}});
    entry.document = document;
    return entry;
  }

  void remember(const Unselected& shape) {
    unselected.push_back(shape);
    if (unselected.size() > mostUnselected) unselected.pop_front();
  }
};

namespace {

/// For the document or, with a null one, for all.
void unmarkUnselected(SelectionMarks& state, const Document& document) {
  for (const SelectionMarks::Unselected& each : std::exchange(state.unselected, {})) {
    const bool isMeant = !document || each.document == document;
    if (!isMeant || !setMark(each.part, false)) state.remember(each);
  }
}

}  // namespace

void markSelection(dsrVisioConnect& connect, const Window& window, const Document& document) {
  if (!isMap(document)) {
    // What was copied from a map with its mark.
    if (const auto state = connect.globalSelectionObj) unmarkUnselected(*state, {});
    return;
  }
  if (!connect.globalSelectionObj) connect.globalSelectionObj = std::make_shared<SelectionMarks>();
  const std::shared_ptr<SelectionMarks> state = connect.globalSelectionObj;
  const unsigned turn = ++state->turn;
  const std::vector<Selected> former = std::exchange(state->of(window, document).selected, {});
  const std::deque<SelectionMarks::Unselected> unselected = std::exchange(state->unselected, {});

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
    each.isHidden = false;
    selected.push_back(each);
  }
  SelectionMarks::OfWindow& entry = state->of(window, document);
  entry.selected = std::move(selected);
  entry.marked = marked;

  const auto unmark = [&](const SelectionMarks::Unselected& shape) {
    if (!marked.contains(shape.part.ref()) && !setMark(shape.part, false)) state->remember(shape);
  };
  for (const SelectionMarks::Unselected& shape : unselected) unmark(shape);
  for (const Selected& each : former) unmark({each.part, document});
  for (const Selected& each : toMark) {
    if (state->turn != turn) return;
    setMark(each.part, true);
  }
}

void unmarkCopyLater(dsrVisioConnect& connect, const Shape& copy) {
  SelectionMarks* const state = connect.globalSelectionObj.get();
  if (!state) return;
  const Shape part = markedPartOf(copy);
  if (!part || !(part.Cells("TextBkgnd").Result(visio::unitsNone) == markedBackground)) return;
  const bool isSelected =
      std::ranges::any_of(state->windows, [&](const auto& each) { return each.marked.contains(part.ref()); });
  if (!isSelected) state->remember({part, copy.Document()});
}

void hideMarks(const dsrVisioConnect& connect, const Document& document) {
  // A handler of a mark's change may select other shapes.
  const std::shared_ptr<SelectionMarks> state = connect.globalSelectionObj;
  if (!state) return;
  unmarkUnselected(*state, document);
  std::vector<Shape> parts;
  for (SelectionMarks::OfWindow& each : state->windows) {
    if (!(each.document == document)) continue;
    for (Selected& selected : each.selected) {
      if (selected.isMarked) parts.push_back(selected.part);
      selected.isHidden = std::exchange(selected.isMarked, false);
    }
  }
  for (const Shape& part : parts) setMark(part, false);
}

void showMarks(const dsrVisioConnect& connect, const Document& document) {
  const std::shared_ptr<SelectionMarks> state = connect.globalSelectionObj;
  if (!state) return;
  std::vector<Shape> parts;
  for (SelectionMarks::OfWindow& each : state->windows) {
    if (!(each.document == document)) continue;
    for (Selected& selected : each.selected) {
      if (!std::exchange(selected.isHidden, false)) continue;
      selected.isMarked = true;
      parts.push_back(selected.part);
    }
  }
  const unsigned turn = state->turn;
  for (const Shape& part : parts) {
    if (state->turn == turn) setMark(part, true);
  }
}

void forgetSelection(dsrVisioConnect& connect, const Document& document) {
  if (!connect.globalSelectionObj) return;
  std::erase_if(connect.globalSelectionObj->windows, [&](const auto& each) { return each.document == document; });
  std::erase_if(connect.globalSelectionObj->unselected, [&](const auto& each) { return each.document == document; });
}

}  // namespace quorvel::addin
