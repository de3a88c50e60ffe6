#include "shapes/list_change.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "display/task_details.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

constexpr int columnPropVerify = 7;

void writeRow(const Shape& task, const schema::NamedRow& row, std::string_view entry) {
  const Cell value = askAgain([&] { return task.Cells(row); });
  // The hyperlinks of a text that is not in the new list are dropped.
  askAgain([&] { return value.FormulaForce(quoted(trimmed(entry))); });
  task.Cells(row.column("Invisible")).FormulaForce("=True");
  if (const auto place = value.Row()) {
    task.CellsSRC(visio::sectionProp, *place, columnPropVerify).FormulaForce("=No Formula");
  }
}

}  // namespace

void spreadList(const dsrVisioConnect& connect, const Shape& task, const schema::DetailList& list) {
  const Maybe<std::string> text = askAgain([&] { return task.Cells(list.cell).ResultStr(visio::unitsNone); });
  // When the list can't be read, its rows must not become empty.
  if (!text) return;
  const ListRows before = snapshotOfListRows(task);
  const std::vector<std::string> entries = parse(*text, ";");
  std::size_t next = 0;
  for (std::size_t slot = 0; slot < before.values.size(); ++slot) {
    const schema::Detail& detail = schema::details[slot];
    if (detail.tag != list.tag) continue;
    if (list.keepsPrompt) task.Cells(detail.row.column("Prompt")).FormulaForce(quoted(before.values[slot]));
    writeRow(task, detail.row, next < entries.size() ? entries[next] : std::string());
    ++next;
  }
  redrawTaskLowerFields(connect, task, schema::tags::guidelines, before);
}

}  // namespace quorvel::addin
