#include "document/document_cells.h"

#include "shapes/rows.h"

namespace quorvel::addin {

std::string documentText(const Document& document, std::string_view cell) {
  return document.DocumentSheet().Cells(cell).ResultStr(visio::unitsNone).or_({});
}

std::string listSeparator(const Document& document) { return documentText(document, "User.lstSpr"); }

void renewListSeparator(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (sheet.CellExists("User.lstSpr", 1) == true) {
    if (const auto row = sheet.Cells("User.lstSpr").Row()) sheet.DeleteRow(visio::sectionUser, *row);
  }
  addUserRow(sheet, "lstSpr");
  sheet.Cells("User.lstSpr").FormulaForce("LISTSEP()");
}

void stampVersion(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (lacksRow(sheet, "User.Quorvel_dll_Version")) addUserRow(sheet, "Quorvel_dll_Version");
  // A bare number: between quotation marks it would read as version 0, and every opening would convert the drawing.
  sheet.Cells("User.Quorvel_dll_Version").SetFormula("2.16");
}

}  // namespace quorvel::addin
