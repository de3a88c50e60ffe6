#include "document/initialize_page.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/basic_text.h"
#include "connect/host_queries.h"
#include "document/page_decorations.h"
#include "schema/cells.h"
#include "schema/display_switches.h"
#include "schema/layers.h"
#include "sheets/protection.h"
#include "sheets/rows.h"

namespace quorvel::addin {
namespace {

using schema::PagePreparation;

struct PageRow {
  schema::NamedRow cell;
  int value;
};

/// The rows with numbers that a page gets at a preparation, in their order.
std::vector<PageRow> numberRows(PagePreparation preparation) {
  std::vector<PageRow> rows;
  for (const schema::LinkSwitch& each : schema::linkSwitches) {
    if (each.preparation == preparation) rows.push_back({each.cell, each.pageValue});
  }
  auto inOrder = schema::taskSwitches;
  std::ranges::sort(inOrder, {}, &schema::TaskSwitch::onPage);
  for (const schema::TaskSwitch& each : inOrder) {
    if (each.preparation == preparation) rows.push_back({each.cell, 1});
  }
  if (preparation == PagePreparation::Once) rows.push_back({schema::pageCells::nextTaskId, 0});
  return rows;
}

void addNumberRows(const Shape& sheet, PagePreparation preparation) {
  for (const PageRow& row : numberRows(preparation)) {
    addRow(sheet, row.cell);
    sheet.Cells(row.cell).SetResult(visio::unitsNone, row.value);
  }
}

void addTextRow(const Shape& sheet, const schema::NamedRow& row, const Maybe<std::string>& text) {
  addRow(sheet, row);
  if (text) sheet.Cells(row).FormulaForce(quoted(*text));
}

/// Details are hidden by moving them to the layer that is not visible.
void addLayers(const Page& page) {
  const Layers layers = page.Layers();
  layers.Add(schema::layers::visible);
  layers.Add(schema::layers::invisible);
  layers.Item(schema::layers::invisible).CellsC(visio::columnLayerVisible).ResultForce(visio::unitsNone, 0);
}

void deleteOurRows(const Shape& sheet) {
  for (const PagePreparation preparation : {PagePreparation::Once, PagePreparation::EachTime}) {
    for (const PageRow& row : numberRows(preparation)) deleteRow(sheet, row.cell);
  }
  deleteRow(sheet, schema::pageCells::taskIdLetters);
  deleteRow(sheet, schema::pageCells::name);
}

void deleteOurLayers(const Page& page) {
  const Layers layers = page.Layers();
  for (int place = layers.Count().or_(0); place > 0; --place) {
    const Maybe<std::string> name = layers.Item(place).Name();
    if (name == schema::layers::visible || name == schema::layers::invisible) {
      page.PageSheet().DeleteRow(visio::sectionLayer, place - 1);
    }
  }
}

void clearPage(const Page& page) {
  const std::vector<Shape> shapes = page.Shapes().all();
  if (!std::ranges::all_of(shapes, isDecorationAsMade)) return;
  for (const Shape& shape : shapes) deleteProtected(shape);
  deleteOurLayers(page);
  deleteOurRows(page.PageSheet());
}

}  // namespace

void initializePage(const dsrVisioConnect& connect, const Page& page) {
  const Shape sheet = page.PageSheet();
  if (lacksRow(sheet, schema::switches::taskDetails)) {
    addNumberRows(sheet, PagePreparation::Once);
    addTextRow(sheet, schema::pageCells::taskIdLetters, std::string());
    addLogo(connect, page);
    addLegend(connect, page);
    addTitleBox(page);
    deselectOn(connect, page);
    addLayers(page);
  }
  addNumberRows(sheet, PagePreparation::EachTime);
  addTextRow(sheet, schema::pageCells::name, page.Name());
}

void fitToPageKind(const dsrVisioConnect& connect, const Page& page) {
  const Maybe<bool> isBackground = page.Background(),
                    isPrepared = page.PageSheet().CellExists(schema::switches::taskDetails, 1);
  if (isBackground == true && isPrepared == true) clearPage(page);
  if (isBackground == false && isPrepared == false) initializePage(connect, page);
}

}  // namespace quorvel::addin
