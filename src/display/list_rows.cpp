#include "display/list_rows.h"

#include "base/basic_text.h"
#include "display/detail_fields.h"

namespace quorvel::addin {
namespace {

std::string cellOf(std::size_t slot, std::string_view cell) {
  return "Prop." + std::string(detailFields[slot + 1].row) + std::string(cell);
}

std::string textOf(const Shape& task, std::size_t slot, std::string_view cell) {
  return task.Cells(cellOf(slot, cell)).ResultStr(visio::unitsNone).or_({});
}

}  // namespace

ListRows snapshotOfListRows(const Shape& task) {
  ListRows rows;
  for (std::size_t slot = 0; slot < rows.values.size(); ++slot) rows.values[slot] = textOf(task, slot, ".Value");
  return rows;
}

void readLabels(const Shape& task, ListRows& rows) {
  for (std::size_t slot = 0; slot < rows.labels.size(); ++slot) rows.labels[slot] = textOf(task, slot, ".Label");
}

void carryLabelsOver(const Shape& task, const ListRows& old) {
  for (std::size_t row = 0; row < old.values.size(); ++row) {
    const std::string value = textOf(task, row, ".Value");
    const std::size_t firstOfList = row - row % rowsOfOneList;
    std::string label;
    for (std::size_t slot = firstOfList; slot < firstOfList + rowsOfOneList; ++slot) {
      if (old.values[slot] == value) label = old.labels[slot];
    }
    task.Cells(cellOf(row, ".Label")).FormulaForce(quoted(label));
    task.Cells(cellOf(row, ".Prompt")).FormulaForce(quoted(value));
  }
}

void clearEmptyFieldLabels(const Shape& task) {
  for (int position = 1; position <= lastListRow + 2; ++position) {
    const std::string row(detailField(position).row);
    if (!(task.Cells("Prop." + row).ResultStr(visio::unitsNone) == "")) continue;
    task.Cells("Prop." + row + ".Prompt").FormulaForce(quoted(""));
    task.Cells(cellOfKeptHyperlinks(position)).FormulaForce(quoted(""));
  }
}

}  // namespace quorvel::addin
