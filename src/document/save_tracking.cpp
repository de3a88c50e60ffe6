#include "document/save_tracking.h"

#include "base/ask_again.h"
#include "connect/host_queries.h"
#include "schema/cells.h"

namespace quorvel::addin {
namespace {

namespace documentCells = schema::documentCells;

bool has(const Shape& sheet, const schema::NamedRow& row) {
  return askAgain([&] { return sheet.CellExists(row, 0); }) == true;
}

void put(const Shape& sheet, const schema::NamedRow& row, double value) {
  askAgain([&] { return sheet.Cells(row).ResultForce(visio::unitsNone, value); });
}

void hideAddin(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (!hasQuorvelTemplate(document) || !has(sheet, documentCells::addinIsFound)) return;
  put(sheet, documentCells::addinIsFound, 0);
  if (has(sheet, documentCells::disableDefine)) put(sheet, documentCells::disableDefine, 0);
}

void showAddin(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (has(sheet, documentCells::addinIsFound)) put(sheet, documentCells::addinIsFound, 1);
}

void markAsSaved(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (!has(sheet, documentCells::isSaved)) return;
  // Written without quotation marks: a truth value, which reads as "TRUE".
  askAgain([&] { return sheet.Cells(documentCells::isSaved).FormulaForce("True"); });
}

}  // namespace

void beforeSave(const Document& document) {
  hideAddin(document);
  markAsSaved(document);
}

void beforeSaveAs(dsrVisioConnect& connect, const Document& document) {
  hideAddin(document);
  if (hasQuorvelTemplate(document)) {
    connect.bFlagSaveAs = true;
    connect.documentSavedAs = document;
  }
  markAsSaved(document);
}

void afterSave(const Document& document) {
  if (!hasQuorvelTemplate(document)) return;
  showAddin(document);
  askAgain([&] { return document.SetSaved(true); });
}

void afterSaveAs(dsrVisioConnect& connect, const Document& document) {
  if (hasQuorvelTemplate(document)) {
    connect.bFlagSaveAs = false;
    connect.documentSavedAs = {};
    showAddin(document);
  }
  markAsSaved(document);
  askAgain([&] { return document.SetSaved(true); });
}

void endCancelledSaveAs(dsrVisioConnect& connect) {
  if (!connect.bFlagSaveAs) return;
  showAddin(connect.documentSavedAs);
  connect.bFlagSaveAs = false;
  connect.documentSavedAs = {};
}

}  // namespace quorvel::addin
