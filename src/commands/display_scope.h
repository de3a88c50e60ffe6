// Which shapes and pages a display command works on, as its dialog's scope says, and what they have in common.
#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "connect/dsr_visio_connect.h"
#include "dialogs/display_dialog.h"

namespace quorvel::addin {

using ShapeTest = bool (*)(const Shape&);

/// What was shown and selected when a command began. The command uses this to its end, even when another page is shown.
struct DisplayTarget {
  Page page;
  std::vector<Shape> selected;  ///< in order of selecting, of whatever class
  std::vector<Shape>
      selectedWithMembers;  ///< the same, with members in place of their groups where members are selected
};
DisplayTarget shownNow(const dsrVisioConnect& connect);

/// The pages whose own switches a scope reaches: none for "Selected", the target's page for "Page", and for "Drawing"
/// those of its document up to the first background page.
std::vector<Page> pagesInScope(const DisplayTarget& target, std::string_view scope);
/// The shapes that fit, on the pages of the scope or among the selected ones; a snapshot.
std::vector<Shape> shapesInScope(const DisplayTarget& target, std::string_view scope, ShapeTest fits);

/// The value of a switch on the selected shapes that fit: 2 when they differ, the page's own value when none is
/// selected.
int commonSwitch(const DisplayTarget& target, std::string_view cell, ShapeTest fits);

/// Writes a dialog's box into a switch: 0 turns it off, all else on, the grey state included. A sheet without the cell
/// is skipped.
void writeSwitch(const Shape& sheet, std::string_view cell, int box);
/// A box for each switch of a table, in the same order.
template <class Switch>
void writeSwitches(const Shape& sheet, std::span<const Switch> switches, std::span<const int> boxes) {
  for (std::size_t i = 0; i < switches.size(); ++i) writeSwitch(sheet, switches[i].cell, boxes[i]);
}

}  // namespace quorvel::addin
