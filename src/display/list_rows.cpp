#include "display/list_rows.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "display/detail_fields.h"

namespace quorvel::addin {
namespace {

std::string cellOf(std::size_t slot, std::string_view cell) {
  return "Prop." + std::string(detailFields[slot + 1].row) + std::string(cell);
}

Maybe<std::string> textOf(const Shape& task, std::size_t slot, std::string_view cell) {
  return askAgain([&] { return task.Cells(cellOf(slot, cell)).ResultStr(visio::unitsNone); });
}

void writeText(const Shape& task, std::size_t slot, std::string_view cell, std::string_view text) {
  askAgain([&] { return task.Cells(cellOf(slot, cell)).FormulaForce(quoted(text)); });
}

}  // namespace

ListRows snapshotOfListRows(const Shape& task) {
  ListRows rows;
  for (std::size_t slot = 0; slot < rows.values.size(); ++slot)
    rows.values[slot] = textOf(task, slot, ".Value").or_({});
  return rows;
}

void readLabels(const Shape& task, ListRows& rows) {
  for (std::size_t slot = 0; slot < rows.labels.size(); ++slot)
    rows.labels[slot] = textOf(task, slot, ".Label").or_({});
}

void carryLabelsOver(const Shape& task, const ListRows& old) {
  for (std::size_t row = 0; row < old.values.size(); ++row) {
    const Maybe<std::string> value = textOf(task, row, ".Value");
    if (!value) continue;
    const std::size_t firstOfList = row - row % rowsOfOneList;
    std::string label;
    for (std::size_t slot = firstOfList; slot < firstOfList + rowsOfOneList; ++slot) {
      if (value == old.values[slot]) label = old.labels[slot];
    }
    writeText(task, row, ".Label", label);
    writeText(task, row, ".Prompt", *value);
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
