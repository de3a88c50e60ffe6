// What is done to shapes: drawing, dropping, copying, deleting, ordering, naming.
#pragma once

#include <string_view>
#include <vector>

#include "host/engine/engine.h"

namespace quorvel::host {

/// A command that makes a shape. The shape is null when a handler removed it.
struct ShapeOutcome {
  Outcome outcome = Outcome::done();
  SheetId shape;
};

/// Drops an instance. It is selected (where the page is shown) and SelectionChanged is raised before ShapeAdded, so
/// that a handler finds the new shape in the selection. One undo step with all that handlers do; none when they delete
/// the shape and change nothing else.
ShapeOutcome dropMaster(Engine& engine, MasterId master, PageId page, double x, double y);
/// In local inches of the group, or the page when `parent` is null.
ShapeOutcome drawRectangle(Engine& engine, PageId page, SheetId parent, double x1, double y1, double x2, double y2);
ShapeOutcome drawLine(Engine& engine, PageId page, SheetId parent, double x1, double y1, double x2, double y2);
/// PNG, JPEG, GIF or BMP, in its own size (96 dots an inch where the file doesn't say), in the middle of its parent.
ShapeOutcome importImage(Engine& engine, PageId page, SheetId parent, const std::string& fileName);
/// A copy a little aside, in the same group, which is selected as a drop is. A copy that a handler makes in
/// BeforeShapeDelete of the shape takes over what is glued to it, and the selection is left as it is.
ShapeOutcome duplicateShape(Engine& engine, SheetId shape);

/// BeforeShapeDelete is raised first. Refused while LockDelete is 1, and for members of a group whose LockGroup is 1.
Outcome deleteShape(Engine& engine, SheetId shape);
/// All of them or none, as one step. Selections keep them until the end, when SelectionChanged is raised once where one
/// of them was selected.
Outcome deleteShapes(Engine& engine, const std::vector<SheetId>& shapes);
/// Both names as long as they are one; else that of the kind.
Outcome renameShape(Engine& engine, SheetId shape, std::string_view name, NameKind kind);
Outcome setData(Engine& engine, SheetId shape, int which, std::string_view text);
Outcome applyStyle(Engine& engine, SheetId shape, std::string_view name);
Outcome bringForward(Engine& engine, SheetId shape, bool toFront);
Outcome flipHorizontal(Engine& engine, SheetId shape);
Outcome reverseEnds(Engine& engine, SheetId shape);
/// Accepted for every shape, and changes nothing: a group here keeps the box that its formulas give it.
Outcome updateAlignmentBox(Engine& engine, SheetId shape);

/// Copies to the clipboard, in stacking order; pastes from it, which is a drop of several shapes at once.
Outcome copyToClipboard(Engine& engine, std::vector<SheetId> shapes);
Outcome paste(Engine& engine, PageId page);

// Selecting. Telling of a change is part of it.
void setSelection(Engine& engine, WindowId window, std::vector<SheetId> shapes);
void showPage(Engine& engine, WindowId window, PageId page);

}  // namespace quorvel::host
