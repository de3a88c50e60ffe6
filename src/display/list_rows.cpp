#include "display/list_rows.h"

#include "base/ask_again.h"
#include "base/basic_text.h"

namespace quorvel::addin {
namespace {

const schema::NamedRow& rowOf(std::size_t slot) { return schema::details[slot].row; }

Maybe<std::string> textOf(const Shape& task, std::string_view cell) {
  return askAgain([&] { return task.Cells(cell).ResultStr(visio::unitsNone); });
}

void writeText(const Shape& task, std::string_view cell, std::string_view text) {
  askAgain([&] { return task.Cells(cell).FormulaForce(quoted(text)); });
}

}  // namespace

ListRows snapshotOfListRows(const Shape& task) {
  ListRows rows;
  for (std::size_t slot = 0; slot < rows.values.size(); ++slot) rows.values[slot] = textOf(task, rowOf(slot)).or_({});
  return rows;
}

void readLabels(const Shape& task, ListRows& rows) {
  for (std::size_t slot = 0; slot < rows.labels.size(); ++slot)
    rows.labels[slot] = textOf(task, schema::details[slot].keptHyperlinks).or_({});
}

void carryLabelsOver(const Shape& task, const ListRows& old) {
  for (std::size_t row = 0; row < old.values.size(); ++row) {
    const Maybe<std::string> value = textOf(task, rowOf(row));
    if (!value) continue;
    std::string label;
    for (std::size_t slot = 0; slot < old.values.size(); ++slot) {
      if (schema::details[slot].tag == schema::details[row].tag && value == old.values[slot]) label = old.labels[slot];
    }
    writeText(task, schema::details[row].keptHyperlinks, label);
    writeText(task, rowOf(row).column("Prompt"), *value);
  }
}

void clearEmptyFieldLabels(const Shape& task) {
  constexpr int lookedAt = schema::lastListRow + 2;
  for (int position = 1; position <= lookedAt; ++position) {
    const schema::Detail& detail = schema::detailAt(position);
    if (!(task.Cells(detail.row).ResultStr(visio::unitsNone) == "")) continue;
    task.Cells(detail.row.column("Prompt")).FormulaForce(quoted(""));
    task.Cells(detail.keptHyperlinks).FormulaForce(quoted(""));
  }
}

}  // namespace quorvel::addin
