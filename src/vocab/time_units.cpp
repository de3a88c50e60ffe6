#include "vocab/time_units.h"

#include <algorithm>
#include <charconv>

#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"
#include "schema/time_units.h"
#include "sheets/cell_writes.h"
#include "sheets/document_cells.h"
#include "sheets/rows.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

/// The host shows a duration as a number, a blank and three characters for the unit: "5 em.".
Maybe<double> numberBeforeUnit(const Maybe<std::string>& shown) {
  constexpr long unitLength = 3;
  if (!shown) return {};
  const std::string text = left(*shown, static_cast<long>(lengthOf(*shown)) - unitLength);
  const std::string_view digits = trimmed(text);
  double number = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  const bool isNumber = read.ec == std::errc() && read.ptr == digits.data() + digits.size();
  return isNumber ? Maybe<double>(number) : Maybe<double>();
}

void captureTime(const Shape& shape, std::string_view property, std::string_view afterSuffix) {
  const schema::TimeUnit* unit =
      schema::timeUnitNamed(shape.Cells(schema::timeCells::unit).ResultStr(visio::unitsNone).or_({}));
  const Maybe<double> number = numberBeforeUnit(shape.Cells(property).ResultStr(visio::unitsNone));
  if (!unit || !number) return;
  shape.Cells(schema::timeCells::value)
      .FormulaForce(shortestNumber(*number) + std::string(unit->suffix) + std::string(afterSuffix));
}

}  // namespace

const std::string& durationFormula() {
  static const std::string formula = [] {
    std::string text = "=  FORMATEX(" + std::string(schema::timeCells::value) + ",\"#.##### u\",,";
    std::string end = ")";
    for (const schema::TimeUnit& unit : schema::timeUnits) {
      const std::string suffix = quoted(std::string(unit.suffix) + ".");
      if (&unit == &schema::timeUnits.back()) {
        text += suffix;
      } else {
        text += "IF(STRSAME(" + std::string(schema::timeCells::unit) + "," + quoted(unit.name) + ")," + suffix + ",";
        end += ")";
      }
    }
    return text + end;
  }();
  return formula;
}

double timeNumber(const Shape& task) {
  return numberBeforeUnit(task.Cells(schema::taskCells::completionTime).ResultStr(visio::unitsNone)).or_(0);
}

void captureCompletionTime(const Shape& task) { captureTime(task, schema::taskCells::completionTime, ""); }

void getTimeunit(const Shape& link) {
  captureTime(link, schema::taskLinkCells::time, ".");
  link.Cells(schema::taskLinkCells::time).FormulaForce(durationFormula());
}

bool makeDuration(const Shape& shape, std::string_view property, const schema::TimeUnit& unit,
                  std::string_view afterSuffix) {
  const auto show = [&] { return putFormula(shape, property, durationFormula()); };
  const Maybe<bool> hasDuration = askAgain([&] { return shape.CellExists(schema::timeCells::value, 0); });
  if (!hasDuration) return false;
  if (*hasDuration) return show();
  const Cell time = askAgain([&] { return shape.Cells(property); });
  Maybe<double> number = askAgain([&] { return time.Result(visio::unitsNone); });
  if (askAgain([&] { return time.ResultStr(visio::unitsNone); }) == "") number = 0.0;
  if (!number) return false;
  const std::string duration =
      *number == 0 ? quoted("0 em.") : shortestNumber(*number) + std::string(unit.suffix) + std::string(afterSuffix);
  const auto keepDuration = [&] { return putFormula(shape, schema::timeCells::value, duration); };
  // Once more at the end: the number that is shown is rounded, and is taken for one that the user typed.
  return addRow(shape, schema::timeCells::value) && keepDuration() && show() && keepDuration();
}

std::string getFormatText(const Shape& task) {
  const Document document = task.Document();
  const std::string sheetName = task.NameID().or_({});
  const std::vector<std::string> units = parse(documentText(document, schema::documentCells::timeUnits), ";");
  const std::vector<std::string> abbreviations =
      parse(documentText(document, schema::documentCells::timeUnitAbbreviations), ";");
  const std::string spr = listSeparator(document);
  std::string formula;
  for (std::size_t i = 0; i < std::min(units.size(), abbreviations.size()); ++i) {
    const schema::TimeUnit* unit = schema::timeUnitNamed(units[i]);
    if (!unit) continue;
    // An apostrophe would end the format's quoted text, a quotation mark the formula's.
    const std::string format = quoted(std::string(unit->format) + "'" + withEscapedApostrophes(abbreviations[i]) + "'");
    if (unit == &schema::timeUnits.back()) {
      formula += spr + format + "))))";
      continue;
    }
    formula += unit == &schema::timeUnits.front() ? "= " : spr;
    formula += "IF(STRSAME(" + sheetName + "!" + std::string(schema::timeCells::unit) + spr + quoted(unit->name) + ")" +
               spr + format;
  }
  return formula;
}

void UpdateDocumentTimeUnitDisplay(const Document& document, const std::vector<std::string>& abbreviations) {
  if (abbreviations.empty()) return;
  std::string text;
  for (const std::string& abbreviation : abbreviations) text += abbreviation + ";";
  text.pop_back();
  document.DocumentSheet().Cells(schema::documentCells::timeUnitAbbreviations).FormulaForce(quoted(text));
}

}  // namespace quorvel::addin
