#include "document/initialize_page.h"

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "addin/host_queries.h"
#include "base/basic_text.h"
#include "document/page_decorations.h"
#include "schema/layers.h"
#include "shapes/rows.h"

namespace quorvel::addin {
namespace {

/// A row of the page's sheet and the value that it starts with.
struct PageRow {
  const char* name;
  int value;
};
/// A new page gets these once.
constexpr PageRow firstRows[] = {{"TaskLink_Visible", 0},
                                 {"Task_Visible", 1},
                                 {"Responsible_Role", 1},
                                 {"controls", 1},
                                 {"Resources", 1},
                                 {"Supporting_Role1", 1},
                                 {"Supporting_Role2", 1},
                                 {"Task_Completion_Time", 1},
                                 {"Frequency_Of_Occurrence", 1},
                                 {"Next_Task_Id", 0}};
/// Each preparation of a page sets these afresh.
constexpr PageRow rowsOfEveryPage[] = {
    {"TaskLink_txt_Visible", 1}, {"TimegreaterThanzero", 0}, {"Supporting_Role3", 1}, {"Supporting_Role4", 1}};
constexpr const char *lettersRow = "Task_Id_Letters", *nameRow = "PAGE_NAME";

void addNumberRows(const Shape& sheet, std::span<const PageRow> rows) {
  for (const PageRow& row : rows) {
    addUserRow(sheet, row.name);
    sheet.Cells("User." + std::string(row.name)).SetResult(visio::unitsNone, row.value);
  }
}

void addTextRow(const Shape& sheet, const std::string& name, const Maybe<std::string>& text) {
  addUserRow(sheet, name);
  if (text) sheet.Cells("User." + name).FormulaForce(quoted(*text));
}

/// Details are hidden by moving them to the layer that does not show.
void addLayers(const Page& page) {
  const Layers layers = page.Layers();
  layers.Add(schema::layers::visible);
  layers.Add(schema::layers::invisible);
  layers.Item(schema::layers::invisible).CellsC(visio::columnLayerVisible).ResultForce(visio::unitsNone, 0);
}

void deleteOurRows(const Shape& sheet) {
  const auto deleteRow = [&](const std::string& name) {
    if (lacksRow(sheet, "User." + name)) return;
    if (const auto row = sheet.Cells("User." + name).Row()) sheet.DeleteRow(visio::sectionUser, *row);
  };
  for (const PageRow& row : firstRows) deleteRow(row.name);
  for (const PageRow& row : rowsOfEveryPage) deleteRow(row.name);
  for (const char* name : {lettersRow, nameRow}) deleteRow(name);
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
  for (const Shape& shape : shapes) {
    shape.Cells("LockDelete").FormulaForce("0");
    shape.Delete();
  }
  deleteOurLayers(page);
  deleteOurRows(page.PageSheet());
}

}  // namespace

void initializePage(const dsrVisioConnect& connect, const Page& page) {
  const Shape sheet = page.PageSheet();
  if (lacksRow(sheet, "User.Task_Visible")) {
    addNumberRows(sheet, firstRows);
    addTextRow(sheet, lettersRow, std::string());
    addLogo(connect, page);
    addLegend(connect, page);
    addTitleBox(page);
    deselectOn(connect, page);
    addLayers(page);
  }
  addNumberRows(sheet, rowsOfEveryPage);
  addTextRow(sheet, nameRow, page.Name());
}

void fitToPageKind(const dsrVisioConnect& connect, const Page& page) {
  const Maybe<bool> isBackground = page.Background(), isPrepared = page.PageSheet().CellExists("User.Task_Visible", 1);
  if (isBackground == true && isPrepared == true) clearPage(page);
  if (isBackground == false && isPrepared == false) initializePage(connect, page);
}

}  // namespace quorvel::addin
