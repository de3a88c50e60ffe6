#include "vocab/task_times.h"

#include <utility>

#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"
#include "sheets/document_cells.h"
#include "vocab/parse.h"
#include "vocab/time_units.h"

namespace quorvel::addin {

namespace taskCells = schema::taskCells;

std::string frequencySeparator(const Shape& task) { return timeNumber(task) == 0 ? "" : ":"; }

void frequencyChanged(const Shape& task) {
  const Maybe<std::string> frequency = task.Cells(taskCells::frequency).ResultStr(visio::unitsNone);
  const Cell partial = task.Cells(taskCells::frequencyAbbreviation);
  if (frequency == "") partial.FormulaForce(quoted(""));
  if (!(frequency != "")) return;
  const Document document = task.Document();
  const std::vector<std::string> descriptions = parse(documentText(document, schema::documentCells::frequencies), ";");
  const std::vector<std::string> abbreviations =
      parse(documentText(document, schema::documentCells::frequencyAbbreviations), ";");
  std::string separator = frequencySeparator(task);
  for (std::size_t i = 0; i + 1 < descriptions.size(); ++i) {
    if (descriptions[i] != *frequency) continue;
    const Maybe<std::string> abbreviation = slot(abbreviations, static_cast<long>(i));
    if (abbreviation) partial.FormulaForce(quoted(*abbreviation + separator));
    separator.clear();
  }
}

void completionTimeChanged(const Shape& task) {
  const Cell partial = task.Cells(taskCells::frequencyAbbreviation);
  const Maybe<std::string> abbreviation = partial.ResultStr(visio::unitsNone);
  if (timeNumber(task) == 0) {
    task.Cells(taskCells::shownTime).FormulaForce(quoted(""));
    if (abbreviation) partial.FormulaForce(quoted(replaceAll(*abbreviation, ":", "")));
    return;
  }
  if (abbreviation != "" && !abbreviation->ends_with(':')) partial.FormulaForce(quoted(*abbreviation + ":"));
  const Cell time = task.Cells(taskCells::completionTime);
  time.FormulaForce(durationFormula());
  task.Cells(taskCells::completionTime.column("Format")).FormulaForce(quoted("#,###.####"));
  task.Cells(taskCells::shownTime).FormulaForce("= " + std::string(taskCells::completionTime));
}

}  // namespace quorvel::addin
