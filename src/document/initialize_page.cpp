#include "document/initialize_page.h"

#include "base/basic_text.h"
#include "document/page_decorations.h"
#include "shapes/rows.h"

namespace quorvel::addin {
namespace {

void addNumberRow(const Shape& sheet, const std::string& name, double value) {
  addUserRow(sheet, name);
  sheet.Cells("User." + name).SetResult(visio::unitsNone, value);
}

void addFirstCells(const Shape& sheet) {
  addNumberRow(sheet, "TaskLink_Visible", 0);
  for (const char* name : {"Task_Visible", "Responsible_Role", "controls", "Resources", "Supporting_Role1",
                           "Supporting_Role2", "Task_Completion_Time", "Frequency_Of_Occurrence"}) {
    addNumberRow(sheet, name, 1);
  }
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

}  // namespace

void initializePage(const dsrVisioConnect& connect, const Page& page) {
  if (lacksRow(page.PageSheet(), "User.Task_Visible")) {
    addFirstCells(page.PageSheet());
    addLogo(connect, page);
    addLegend(connect, page);
    addTitleBox(page);
    connect.gvsoApp.ActiveWindow().DeselectAll();
    addLayers(page);
  }
  addCellsOfEveryPage(page);
}

}  // namespace quorvel::addin
