// Adding rows to a sheet, in the words that the rest of the code uses for it.
#pragma once

#include <string>
#include <string_view>

#include "base/basic_text.h"
#include "model/host_model.h"
#include "schema/cells.h"

namespace quorvel::addin {

/// Has the sheet no row of its own for this cell? A row that only its master has is missing, so that a shape dropped
/// from a master that was made of a used Task is still a first drop. False also when the host does not answer.
inline bool lacksRow(const Shape& sheet, std::string_view cell) { return sheet.CellExists(cell, 1) == false; }

inline int sectionOf(const schema::NamedRow& row) {
  return row.isShapeData() ? visio::sectionProp : visio::sectionUser;
}
/// False when the sheet has the row already, which most callers do not mind.
inline bool addRow(const Shape& sheet, const schema::NamedRow& row) {
  return sheet.AddNamedRow(sectionOf(row), row.name(), 0).has();
}
/// Only a row of the sheet's own.
inline void deleteRow(const Shape& sheet, const schema::NamedRow& row) {
  if (lacksRow(sheet, row)) return;
  if (const auto place = sheet.Cells(row).Row()) sheet.DeleteRow(sectionOf(row), *place);
}
/// One more entry for the shape's menu, behind the others.
inline bool addActionRow(const Shape& sheet) { return sheet.AddRow(visio::sectionAction, visio::rowLast, 0).has(); }

/// The row that holds a Task's or link's duration, when it is missing: no minutes.
inline void addTimeValue(const Shape& shape) {
  if (!lacksRow(shape, schema::timeCells::value)) return;
  addRow(shape, schema::timeCells::value);
  shape.Cells(schema::timeCells::value).FormulaForce(quoted("0 em."));
}

}  // namespace quorvel::addin
