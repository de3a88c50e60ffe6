// Gives a connector the line that was found for it: its ends, size, geometry and the place of its text.
#pragma once

#include "host/engine/engine.h"
#include "host/routing/plane.h"

namespace quorvel::host {

/// `line` in inches of the page. Ends that walk are moved to its ends. Values follow, no event is raised; appends the
/// cells that changed. Nothing happens to a connector whose geometry is guarded.
void drawLine(Engine& engine, SheetId connector, const Polyline& line, std::vector<CellAddress>& changed);

/// Only the ends that walk, to the line's ends.
void moveEnds(Engine& engine, SheetId connector, const Polyline& line, std::vector<CellAddress>& changed);

/// The line as drawn, with its vertices moved so that it meets the ends again: for connectors that keep their shape.
void stretchLine(Engine& engine, SheetId connector, std::vector<CellAddress>& changed);

/// Whether the vertices are plain ones of straight lines; others are stretched, never redrawn.
bool isStraightLined(const Store& store, SheetId connector);

}  // namespace quorvel::host
