#include "vocab/time_units.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/basic_text.h"
#include "base/text.h"
#include "document/document_cells.h"
#include "links/task_link_picture.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

struct TimeUnit {
  std::string_view name;
  std::string_view suffix;  ///< what the host calls it in formulas
  std::string_view picture;
};

constexpr std::array<TimeUnit, 5> timeUnits{{
    {"Minutes", "em", "0.##"},
    {"Seconds", "es", "0.##"},
    {"Hours", "eh", "0.##"},
    {"Days", "ed", "0.###"},
    {"Weeks", "ew", "0.###"},
}};

const TimeUnit* unitNamed(std::string_view name) {
  const auto unit = std::ranges::find(timeUnits, name, &TimeUnit::name);
  return unit == timeUnits.end() ? nullptr : &*unit;
}

/// The host shows a duration as number and three characters for the unit: "5 em.".
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

void captureTime(const Shape& shape, std::string_view property, std::string_view behindSuffix) {
  const TimeUnit* unit = unitNamed(shape.Cells("Prop.Time_Units").ResultStr(visio::unitsNone).or_({}));
  const Maybe<double> number = numberBeforeUnit(shape.Cells(property).ResultStr(visio::unitsNone));
  if (!unit || !number) return;
  shape.Cells("User.TimeValue")
      .FormulaForce(shortestNumber(*number) + std::string(unit->suffix) + std::string(behindSuffix));
}

}  // namespace

double timeNumber(const Shape& task) {
  return numberBeforeUnit(task.Cells("Prop.Task_Completion_Time").ResultStr(visio::unitsNone)).or_(0);
}

void captureCompletionTime(const Shape& task) { captureTime(task, "Prop.Task_Completion_Time", ""); }

void getTimeunit(const Shape& link) {
  captureTime(link, "Prop.Time_Between_Tasks", ".");
  link.Cells("Prop.Time_Between_Tasks").FormulaForce(durationFormula);
}

std::string getFormatText(const Shape& task) {
  const Document document = task.Document();
  const std::string sheetName = task.NameID().or_({});
  const std::vector<std::string> units = parse(documentText(document, "User.Time_Unit"), ";");
  const std::vector<std::string> abbreviations = parse(documentText(document, "User.Time_Unit_Disply"), ";");
  const std::string spr = listSeparator(document);
  std::string formula;
  for (std::size_t i = 0; i < std::min(units.size(), abbreviations.size()); ++i) {
    const TimeUnit* unit = unitNamed(units[i]);
    if (!unit) continue;
    // An apostrophe would end the picture's quoted text, a quotation mark the formula's.
    const std::string picture =
        quoted(std::string(unit->picture) + "'" + withEscapedApostrophes(abbreviations[i]) + "'");
    if (unit->name == "Weeks") {
      formula += spr + picture + "))))";
      continue;
    }
    formula += unit->name == "Seconds" ? "= " : spr;
    formula += "IF(STRSAME(" + sheetName + "!Prop.Time_Units" + spr + quoted(unit->name) + ")" + spr + picture;
  }
  return formula;
}

void UpdateDocumentTimeUnitDisplay(const Document& document, const std::vector<std::string>& abbreviations) {
  if (abbreviations.empty()) return;
  std::string text;
  for (const std::string& abbreviation : abbreviations) text += abbreviation + ";";
  text.pop_back();
  document.DocumentSheet().Cells("User.Time_Unit_Disply").FormulaForce(quoted(text));
}

}  // namespace quorvel::addin
