// The parts of a glued end other than its formulas: the entry among the page's connects and the trigger cell. Changes
// raise no events.
#pragma once

#include "host/engine/engine.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {

/// A cell of a row of connection points.
CellKey connectionCell(RowKey row, std::string_view column);

/// The point of a shape that an end is glued to.
struct GlueTarget {
  static constexpr int pinPart = 3;
  std::string x, y;  ///< cell names on the target
  std::string cell;  ///< as the file's connect names it
  int part = pinPart;
};
/// The connection point at the 0-based place among the rows of the section.
GlueTarget glueTargetAt(const std::vector<RowView>& connectionPoints, std::size_t place);

/// The entry of the end among the connects of its page.
void removeConnect(Engine& engine, SheetId from, bool begin);
void addConnect(Engine& engine, SheetId from, bool begin, SheetId to, std::string toCell, int toPart);

/// The trigger follows nothing any more: it is as the master has it, or without a formula.
void releaseTrigger(Engine& engine, SheetId from, bool begin);

/// An end that walks stays where it is, and walks no longer.
void freeWalkingEnd(Engine& engine, SheetId connector, bool begin);

/// Call when a formula was written to a cell: an end whose formula no longer glues is set free altogether, and one that
/// was glued by its formula gets its connect. `before`: the formula that the cell had.
void followGlue(Engine& engine, const CellAddress& cell, const FormulaPtr& before);

}  // namespace quorvel::host
