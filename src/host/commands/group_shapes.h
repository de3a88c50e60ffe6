// Grouping shapes and giving groups up again. Every member stays where it is on the page.
#pragma once

#include <vector>

#include "host/commands/shapes.h"

namespace quorvel::host {

/// Makes a group of shapes that are in the same group, or in no group of the same page, around the upright box of them
/// all. It takes the place of the topmost in the stack; the members keep their order. Where one of them was selected
/// the group is. Told are ShapeAdded of the group, ShapeParentChanged of each member, then its cells. Refused for no
/// shapes, guides, shapes of different groups, members of a group whose LockGroup is 1, shapes on a locked layer or
/// locked against selecting, and beyond the deepest nesting.
ShapeOutcome groupShapes(Engine& engine, std::vector<SheetId> shapes);

/// Makes a shape a group that has no members yet. Refused for groups, images and guides.
Outcome convertToGroup(Engine& engine, SheetId shape);

/// Members take the place of their group in the stack, and the group is deleted with its own text and geometry;
/// BeforeShapeDelete of it is raised first, ShapeParentChanged of each member afterwards. Members of an instance hold
/// all cells themselves from then on. Shapes among `shapes` that are no groups are skipped. Refused when none is a
/// group, and as a whole when one of the groups has no members, is locked (LockGroup), is on a locked layer or is
/// locked against selecting.
Outcome ungroupShapes(Engine& engine, const std::vector<SheetId>& shapes);

}  // namespace quorvel::host
