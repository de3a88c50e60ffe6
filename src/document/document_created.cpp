#include "document/document_created.h"

#include "base/basic_text.h"
#include "document/initialize_document.h"
#include "schema/cells.h"
#include "sheets/document_cells.h"
#include "sheets/rows.h"

namespace quorvel::addin {

void gvsoApp_DocumentCreated(dsrVisioConnect& connect, const Document& document) {
  const Shape sheet = document.DocumentSheet();
  const bool isMissing = lacksRow(sheet, schema::documentCells::isSaved);
  if (isMissing) addRow(sheet, schema::documentCells::isSaved);
  // A template that the add-in has saved holds the row as true, but a document without a folder was never saved.
  if (isMissing || document.Path() == "") sheet.Cells(schema::documentCells::isSaved).FormulaForce(quoted("False"));
  renewListSeparator(document);
  initializeDocument(connect, document);
  stampVersion(document);
}

}  // namespace quorvel::addin
