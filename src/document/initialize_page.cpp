#include "document/initialize_page.h"

#include <algorithm>
#include <array>
#include <vector>

#include "addin/host_queries.h"
#include "base/basic_text.h"
#include "document/page_decorations.h"
#include "shapes/rows.h"

namespace quorvel::addin {
namespace {

void addNumberRow(const Shape& sheet, const std::string& name, double value) {
  addUserRow(sheet, name);
  sheet.Cells("User." + name).SetResult(visio::unitsNone, value);
}

constexpr std::array firstSwitches{
    "Task_Visible",         "Responsible_Role",       "controls", "Resources", "Supporting_Role1", "Supporting_Role2",
    "Task_Completion_Time", "Frequency_Of_Occurrence"};

void addFirstCells(const Shape& sheet) {
  addNumberRow(sheet, "TaskLink_Visible", 0);
  for (const char* name : firstSwitches) addNumberRow(sheet, name, 1);
  addNumberRow(sheet, "Next_Task_Id", 0);
  addUserRow(sheet, "Task_Id_Letters");
  sheet.Cells("User.Task_Id_Letters").FormulaForce(quoted(""));
}

/// Details are hidden by moving them to the layer that does not show.
void addLayers(const Page& page) {
  page.Layers().Add("VisibleLayer");
  page.Layers().Add("InvisibleLayer");
  page.Layers().Item("InvisibleLayer").CellsC(visio::columnLayerVisible).ResultForce(visio::unitsNone, 0);
}

void addCellsOfEveryPage(const Page& page) {
  const Shape sheet = page.PageSheet();
  addNumberRow(sheet, "TaskLink_txt_Visible", 1);
  addNumberRow(sheet, "TimegreaterThanzero", 0);
  addNumberRow(sheet, "Supporting_Role3", 1);
  addNumberRow(sheet, "Supporting_Role4", 1);
  addUserRow(sheet, "PAGE_NAME");
  if (const auto name = page.Name()) sheet.Cells("User.PAGE_NAME").FormulaForce(quoted(*name));
}

void deleteOurRows(const Shape& sheet) {
  const auto deleteRow = [&](const std::string& name) {
    if (lacksRow(sheet, "User." + name)) return;
    if (const auto row = sheet.Cells("User." + name).Row()) sheet.DeleteRow(visio::sectionUser, *row);
  };
  for (const char* name : firstSwitches) deleteRow(name);
  for (const char* name : {"TaskLink_Visible", "Next_Task_Id", "Task_Id_Letters", "TaskLink_txt_Visible",
                           "TimegreaterThanzero", "Supporting_Role3", "Supporting_Role4", "PAGE_NAME"}) {
    deleteRow(name);
  }
}

void deleteOurLayers(const Page& page) {
  const Layers layers = page.Layers();
  for (int place = layers.Count().or_(0); place > 0; --place) {
    const Maybe<std::string> name = layers.Item(place).Name();
    if (name == "VisibleLayer" || name == "InvisibleLayer") page.PageSheet().DeleteRow(visio::sectionLayer, place - 1);
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
  if (lacksRow(page.PageSheet(), "User.Task_Visible")) {
    addFirstCells(page.PageSheet());
    addLogo(connect, page);
    addLegend(connect, page);
    addTitleBox(page);
    deselectOn(connect, page);
    addLayers(page);
  }
  addCellsOfEveryPage(page);
}

void fitToPageKind(const dsrVisioConnect& connect, const Page& page) {
  const Maybe<bool> isBackground = page.Background(), isPrepared = page.PageSheet().CellExists("User.Task_Visible", 1);
  if (isBackground == true && isPrepared == true) clearPage(page);
  if (isBackground == false && isPrepared == false) initializePage(connect, page);
}

}  // namespace quorvel::addin
