#include "vocab/frequencies.h"

#include "base/basic_text.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"
#include "vocab/task_times.h"

namespace quorvel::addin {
namespace {

namespace taskCells = schema::taskCells;

template <class Fits>
bool anyTask(const Document& document, Fits fits) {
  bool found = false;
  forEachShape(document, [&](const Shape& shape) { found = found || (IsTask(shape) && fits(shape)); });
  return found;
}

}  // namespace

void update_freq(const Document& document, const std::string& list) {
  const std::string formula = quoted(list);
  forEachShape(document, [&](const Shape& shape) {
    if (IsTask(shape)) shape.Cells(taskCells::frequency.column("Format")).FormulaForce(formula);
  });
}

void showFrequencies(const Document& document, const std::vector<Frequency>& frequencies) {
  forEachShape(document, [&](const Shape& shape) {
    if (!IsTask(shape)) return;
    const std::string separator = frequencySeparator(shape);
    const Maybe<std::string> chosen = shape.Cells(taskCells::frequency).ResultStr(visio::unitsNone);
    for (const Frequency& frequency : frequencies) {
      if (chosen == frequency.description)
        shape.Cells(taskCells::frequencyAbbreviation).FormulaForce(quoted(frequency.abbreviation + separator));
    }
  });
}

bool isAbbreviationInUse(const Document& document, const std::string& abbreviation) {
  return anyTask(document, [&](const Shape& task) {
    const Maybe<std::string> partial = task.Cells(taskCells::frequencyAbbreviation).ResultStr(visio::unitsNone);
    return partial && left(*partial, 2) == abbreviation;
  });
}

bool isDescriptionInUse(const Document& document, const std::string& description) {
  if (description.empty()) return false;
  return anyTask(document, [&](const Shape& task) {
    return task.Cells(taskCells::frequency).ResultStr(visio::unitsNone) == description;
  });
}

}  // namespace quorvel::addin
