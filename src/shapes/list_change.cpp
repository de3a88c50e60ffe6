#include "shapes/list_change.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "display/detail_fields.h"
#include "display/task_details.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

constexpr int columnPropVerify = 7;

void writeRow(const Shape& task, const std::string& row, std::string_view entry) {
  const Cell value = askAgain([&] { return task.Cells(row + ".Value"); });
  // The links of a text that is missing from the list are given up.
  askAgain([&] { return value.FormulaForce(quoted(trimmed(entry))); });
  task.Cells(row + ".Invisible").FormulaForce("=True");
  if (const auto place = value.Row()) {
    task.CellsSRC(visio::sectionProp, *place, columnPropVerify).FormulaForce("=No Formula");
  }
}

void spread(const dsrVisioConnect& connect, const Shape& task, const char* list, int firstPosition, bool keepsPrompt) {
  const Maybe<std::string> text = askAgain([&] { return task.Cells(list).ResultStr(visio::unitsNone); });
  // A list that can't be read must not empty its rows.
  if (!text) return;
  const ListRows before = snapshotOfListRows(task);
  std::vector<std::string> entries = parse(*text, ";");
  entries.resize(rowsOfOneList);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto position = static_cast<std::size_t>(firstPosition) + i;
    const std::string row = "Prop." + std::string(detailFields[position].row);
    if (keepsPrompt) task.Cells(row + ".Prompt").FormulaForce(quoted(before.values[position - 1]));
    writeRow(task, row, entries[i]);
  }
  redrawTaskLowerFields(connect, task, "controls", before);
}

}  // namespace

void spreadGuidelines(const dsrVisioConnect& connect, const Shape& task) {
  spread(connect, task, "Prop.Guidelines", 1, false);
}

void spreadResources(const dsrVisioConnect& connect, const Shape& task) {
  spread(connect, task, "Prop.Resources", 1 + rowsOfOneList, true);
}

}  // namespace quorvel::addin
