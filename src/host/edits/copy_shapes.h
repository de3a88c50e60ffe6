// Making shapes from masters and from other shapes: instances, duplicates, copies from one drawing to another.
#pragma once

#include <vector>

#include "host/engine/engine.h"

namespace quorvel::host {

/// The drawing's own copy of a master: itself when it is of this drawing, one that was copied from it before (equal
/// unique or base ID, equal name), or a new copy with the styles that it needs.
MasterId localMaster(Engine& engine, DocumentId document, MasterId master);

/// An instance with its pin at x, y (a 1-D shape: its middle), at the top of the stack. Values follow; no event is
/// raised.
SheetId instantiate(Engine& engine, MasterId master, PageId page, double x, double y);

/// Copies of the shapes with their members on `page`, in `parent` (null: the page itself), in their order. Formulas
/// that name shapes of the copied set name the copies; each copy has a new default name. On another page, formulas that
/// name any other shape are left out and their values kept, and members of groups keep their place on the page. What a
/// shape inherits, but cannot inherit there, becomes its own. No event is raised. `copied` gets all shapes with their
/// copies.
std::vector<SheetId> copyShapes(Engine& engine, const std::vector<SheetId>& shapes, PageId page, SheetId parent,
                                double dx, double dy, SheetMap* copied = nullptr);

}  // namespace quorvel::host
