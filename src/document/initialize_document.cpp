#include "document/initialize_document.h"

#include "base/basic_text.h"
#include "display/field_names.h"
#include "document/initialize_page.h"
#include "shapes/rows.h"
#include "vocab/default_lists.h"

namespace quorvel::addin {
namespace {

/// Keeps what the template or an earlier session put there.
void addWhenMissing(const Shape& sheet, const std::string& name, std::string_view value) {
  if (!lacksRow(sheet, "User." + name)) return;
  addUserRow(sheet, name);
  sheet.Cells("User." + name).FormulaForce(quoted(value));
}

void addVocabularies(const Shape& sheet) {
  addWhenMissing(sheet, "RoleNames", defaults::roleNames);

  // Unlike the other lists, this one always starts from the defaults.
  if (lacksRow(sheet, "User.FreqSuggestions")) addUserRow(sheet, "FreqSuggestions");
  sheet.Cells("User.FreqSuggestions").FormulaForce(quoted(defaults::frequencies));
  sheet.Cells("User.FreqSuggestions.Prompt").FormulaForce(quoted(defaults::frequencyAbbreviations));

  if (lacksRow(sheet, "User.Time_Unit")) {
    addUserRow(sheet, "Time_Unit");
    sheet.Cells("User.Time_Unit").FormulaForce(quoted(defaults::timeUnits));
    sheet.Cells("User.Time_Unit.Prompt").FormulaForce(quoted(defaults::timeUnit));
  }
  addWhenMissing(sheet, "Time_Unit_Disply", defaults::timeUnitAbbreviations);
}

}  // namespace

void initializeDocument(dsrVisioConnect& connect, const Document& document) {
  const Shape sheet = document.DocumentSheet();
  addVocabularies(sheet);
  document.SetProtection("Velmora1998", visio::protectShapes);
  fillFieldNames(connect);
  for (const Page& page : document.Pages().all()) {
    if (page.Background() == false) initializePage(connect, page);
  }
  addUserRow(sheet, "Based_On_ZNB");
  addUserRow(sheet, "DisableDefine");
  sheet.Cells("User.Based_On_ZNB").ResultForce(visio::unitsNone, 1);
  sheet.Cells("User.DisableDefine").ResultForce(visio::unitsNone, 0);
  addUserRow(sheet, "AddinIsFound");
  sheet.Cells("User.AddinIsFound").ResultForce(visio::unitsNone, 1);
}

}  // namespace quorvel::addin
