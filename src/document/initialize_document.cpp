#include "document/initialize_document.h"

#include "base/basic_text.h"
#include "display/field_names.h"
#include "document/initialize_page.h"
#include "schema/cells.h"
#include "sheets/rows.h"
#include "vocab/default_lists.h"

namespace quorvel::addin {
namespace {

namespace documentCells = schema::documentCells;

void put(const Shape& sheet, std::string_view cell, std::string_view value) {
  askAgain([&] { return sheet.Cells(cell).FormulaForce(quoted(value)); });
}

/// Keeps what the template or an earlier session has written. True when the row was added.
bool addWhenMissing(const Shape& sheet, const schema::NamedRow& row, std::string_view value) {
  if (!lacksRow(sheet, row) || !askAgain([&] { return addRow(sheet, row); })) return false;
  put(sheet, row, value);
  return true;
}

}  // namespace

void addTimesAndFrequencies(const Shape& sheet) {
  // Unlike the other lists, this one always starts from the defaults.
  addWhenMissing(sheet, documentCells::frequencies, defaults::frequencies);
  put(sheet, documentCells::frequencies, defaults::frequencies);
  put(sheet, documentCells::frequencyAbbreviations, defaults::frequencyAbbreviations);

  if (addWhenMissing(sheet, documentCells::timeUnits, defaults::timeUnits))
    put(sheet, documentCells::defaultTimeUnit, defaults::timeUnit);
  addWhenMissing(sheet, documentCells::timeUnitAbbreviations, defaults::timeUnitAbbreviations);
}

void initializeDocument(dsrVisioConnect& connect, const Document& document) {
  const Shape sheet = document.DocumentSheet();
  addWhenMissing(sheet, documentCells::roleNames, defaults::roleNames);
  addTimesAndFrequencies(sheet);
  document.SetProtection("Velmora1998", visio::protectShapes);
  fillFieldNames(connect);
  for (const Page& page : document.Pages().all()) {
    if (page.Background() == false) initializePage(connect, page);
  }
  addRow(sheet, documentCells::isInitialized);
  addRow(sheet, documentCells::disableDefine);
  const auto putNumber = [&](const schema::NamedRow& row, double value) {
    askAgain([&] { return sheet.Cells(row).ResultForce(visio::unitsNone, value); });
  };
  putNumber(documentCells::isInitialized, 1);
  putNumber(documentCells::disableDefine, 0);
  addRow(sheet, documentCells::addinIsFound);
  putNumber(documentCells::addinIsFound, 1);
}

}  // namespace quorvel::addin
