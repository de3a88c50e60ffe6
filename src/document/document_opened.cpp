#include "document/document_opened.h"

#include "base/basic_text.h"
#include "base/text.h"
#include "display/field_names.h"
#include "document/initialize_document.h"
#include "document/older_shapes.h"
#include "document/report_definitions.h"
#include "document/upgrade_task_links.h"
#include "document/upgrade_tasks.h"
#include "schema/cells.h"
#include "schema/display_switches.h"
#include "sheets/document_cells.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"

namespace quorvel::addin {
namespace {

namespace documentCells = schema::documentCells;

void addDocumentSaved(const Shape& sheet) {
  if (!lacksRow(sheet, documentCells::isSaved)) return;
  addRow(sheet, documentCells::isSaved);
  // A drawing that is opened was saved.
  sheet.Cells(documentCells::isSaved).FormulaForce("True");
}

void updatePages(const Document& document) {
  for (const Page& page : everyPage(document)) {
    const Shape sheet = page.PageSheet();
    const auto addWhenMissing = [&](const schema::NamedRow& row, const std::string& formula) {
      if (!(askAgain([&] { return sheet.CellExists(row, 1); }) == false)) return;
      addRow(sheet, row);
      askAgain([&] { return sheet.Cells(row).FormulaForce(formula); });
    };
    if (const auto name = askAgain([&] { return page.Name(); })) addWhenMissing(schema::pageCells::name, quoted(*name));
    addWhenMissing(schema::switches::supportingRoles[2], "1");
    addWhenMissing(schema::switches::supportingRoles[3], "1");
    addWhenMissing(schema::switches::linkDescription, "1");
    // Marks a converted page.
    addWhenMissing(schema::switches::linkTimeAboveZero, "2");
  }
}

}  // namespace

double versionOf(const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (sheet.CellExists(documentCells::version, 0) != true) return 0;
  return val(askAgain([&] { return sheet.Cells(documentCells::version).ResultStr(visio::unitsNone); }).or_({}));
}

void upgradeDocument(dsrVisioConnect& connect, const Document& document) {
  const Shape sheet = document.DocumentSheet();
  const double version = versionOf(document);
  if (sheet.CellExists(documentCells::version, 0) == true) {
    if (version < 1.3) updateShapesBefore13(document);
    if (version < 1.6) updateShapesBefore16(document);
  }
  renewListSeparator(document);
  if (version < firstCurrentVersion) {
    addTimesAndFrequencies(sheet);
    addDocumentSaved(sheet);
    addReportDefinitions(connect, document);
    updateTasks(connect, document, version);
    updateTaskLink(document);
    updatePages(document);
  } else if (version < 2.03) {
    addDocumentSaved(sheet);
    updateTasks(connect, document, version);
    updatePages(document);
  } else if (version < currentVersion) {
    updateTaskLink(document);
  }
}

void takeUpDocument(dsrVisioConnect& connect, const Document& document) {
  const Shape sheet = document.DocumentSheet();
  if (lacksRow(sheet, documentCells::isInitialized)) {
    initializeDocument(connect, document);
  } else {
    if (sheet.CellExists(documentCells::addinIsFound, 0) == true)
      sheet.Cells(documentCells::addinIsFound).ResultForce(visio::unitsNone, 1);
    fillFieldNames(connect);
  }
  stampVersion(document);
}

}  // namespace quorvel::addin
