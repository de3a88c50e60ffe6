#include "document/save_tracking.h"

#include "base/ask_again.h"
#include "schema/cells.h"

namespace quorvel::addin {

void markAsSaved(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (sheet.CellExists(schema::documentCells::isSaved, 0) != true) return;
  const Cell isSaved = sheet.Cells(schema::documentCells::isSaved);
  // Written without quotation marks: a truth value, which reads as "TRUE".
  if (!(isSaved.ResultStr(visio::unitsNone) == "TRUE")) askAgain([&] { return isSaved.FormulaForce("True"); });
}

}  // namespace quorvel::addin
