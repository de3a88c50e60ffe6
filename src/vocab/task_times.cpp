#include "vocab/task_times.h"

#include <utility>

#include "base/basic_text.h"
#include "base/text.h"
#include "document/document_cells.h"
#include "vocab/parse.h"
#include "vocab/time_units.h"

namespace quorvel::addin {

std::string frequencyJoint(const Shape& task) { return timeNumber(task) == 0 ? "" : ":"; }

void frequencyChanged(const Shape& task) {
  const Maybe<std::string> frequency = task.Cells("Prop.Frequency_Of_Occurrence").ResultStr(visio::unitsNone);
  const Cell partial = task.Cells("Prop.Frequency_Partial");
  if (frequency == "") partial.FormulaForce(quoted(""));
  if (!(frequency != "")) return;
  const Document document = task.Document();
  const std::vector<std::string> descriptions = parse(documentText(document, "User.FreqSuggestions"), ";");
  const std::vector<std::string> abbreviations = parse(documentText(document, "User.FreqSuggestions.Prompt"), ";");
  std::string joint = frequencyJoint(task);
  for (std::size_t i = 0; i + 1 < descriptions.size(); ++i) {
    if (descriptions[i] != *frequency) continue;
    const Maybe<std::string> abbreviation = slot(abbreviations, static_cast<long>(i));
    if (abbreviation) partial.FormulaForce(quoted(*abbreviation + joint));
    joint.clear();
  }
}

void completionTimeChanged(const Shape& task) {
  const Cell partial = task.Cells("Prop.Frequency_Partial");
  const Maybe<std::string> abbreviation = partial.ResultStr(visio::unitsNone);
  if (timeNumber(task) == 0) {
    task.Cells("Prop.Process_Time_Str").FormulaForce(quoted(""));
    if (abbreviation) partial.FormulaForce(quoted(replaceAll(*abbreviation, ":", "")));
    return;
  }
  if (abbreviation != "" && !abbreviation->ends_with(':')) partial.FormulaForce(quoted(*abbreviation + ":"));
  const Cell time = task.Cells("Prop.Task_Completion_Time");
  time.FormulaForce(durationFormula);
  task.Cells("Prop.Task_Completion_Time.Format").FormulaForce(quoted("#,###.####"));
  task.Cells("Prop.Process_Time_Str").FormulaForce("= Prop.Task_Completion_Time");
}

}  // namespace quorvel::addin
