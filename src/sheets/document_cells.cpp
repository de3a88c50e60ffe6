#include "sheets/document_cells.h"

#include "base/text.h"
#include "schema/cells.h"
#include "sheets/rows.h"

namespace quorvel::addin {

namespace documentCells = schema::documentCells;

std::string documentText(const Document& document, std::string_view cell) {
  return askAgain([&] { return document.DocumentSheet().Cells(cell).ResultStr(visio::unitsNone); }).or_({});
}

bool wasSavedReads(const Document& document, std::string_view word) {
  const Shape sheet = document.DocumentSheet();
  if (sheet.CellExists(documentCells::isSaved, 0) != true) return false;
  const Maybe<std::string> saved = sheet.Cells(documentCells::isSaved).ResultStr(visio::unitsNone);
  return saved && equalIgnoringCase(*saved, word);
}

std::string listSeparator(const Document& document) { return documentText(document, documentCells::listSeparator); }

void renewListSeparator(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  deleteRow(sheet, documentCells::listSeparator);
  askAgain([&] { return addRow(sheet, documentCells::listSeparator); });
  askAgain([&] { return sheet.Cells(documentCells::listSeparator).FormulaForce("LISTSEP()"); });
}

void stampVersion(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (lacksRow(sheet, documentCells::version)) addRow(sheet, documentCells::version);
  // A bare number: between quotation marks it would read as version 0, and every opening would convert the drawing.
  sheet.Cells(documentCells::version).SetFormula("2.16");
}

}  // namespace quorvel::addin
