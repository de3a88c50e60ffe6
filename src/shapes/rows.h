// Adding rows to a sheet, in the words that the rest of the code uses for it.
#pragma once

#include <string>
#include <string_view>

#include "base/basic_text.h"
#include "model/host_model.h"

namespace quorvel::addin {

/// Has the sheet no row of its own for this cell? A row that only its master has is missing, so that a shape dropped
/// from a master that was made of a used Task is still a first drop. False also when the host does not answer.
inline bool lacksRow(const Shape& sheet, std::string_view cell) { return sheet.CellExists(cell, 1) == false; }

/// The row `User.name` or `Prop.name`. False when the sheet has it already, which most callers do not mind.
inline bool addUserRow(const Shape& sheet, std::string_view name) {
  return sheet.AddNamedRow(visio::sectionUser, name, 0).has();
}
inline bool addPropRow(const Shape& sheet, std::string_view name) {
  return sheet.AddNamedRow(visio::sectionProp, name, 0).has();
}
/// One more entry for the shape's menu, behind the others.
inline bool addActionRow(const Shape& sheet) { return sheet.AddRow(visio::sectionAction, visio::rowLast, 0).has(); }

/// The row that holds a Task's or link's duration, when it is missing: no minutes.
inline void addTimeValue(const Shape& shape) {
  if (!lacksRow(shape, "User.TimeValue")) return;
  addUserRow(shape, "TimeValue");
  shape.Cells("User.TimeValue").FormulaForce(quoted("0 em."));
}

}  // namespace quorvel::addin
