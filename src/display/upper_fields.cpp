#include "display/upper_fields.h"

#include "base/basic_text.h"
#include "base/text.h"
#include "display/detail_shapes.h"
#include "display/field_hyperlinks.h"
#include "schema/details.h"
#include "vocab/time_units.h"

namespace quorvel::addin {
namespace {

namespace switches = schema::switches;
namespace tags = schema::tags;
namespace taskCells = schema::taskCells;

std::string textOf(const Shape& task, std::string_view cell) {
  return task.Cells(cell).ResultStr(visio::unitsNone).or_({});
}

bool isOn(const Shape& task, std::string_view switchCell) {
  return task.Cells(switchCell).Result(visio::unitsNone) == 1;
}

void setFormulas(const Shape& shape, std::initializer_list<std::pair<const char*, const char*>> cells) {
  for (const auto& [cell, formula] : cells) shape.Cells(cell).FormulaForce(formula);
}

/// An arch over the Task, filled as the Task is.
void drawResponsibleRole(const Shape& task) {
  const std::string role = textOf(task, taskCells::responsibleRole);
  if (!isOn(task, switches::responsibleRole) || role.empty()) return;
  const double width = task.Cells("Width").Result(visio::unitsInches).or_(0);
  const double height = task.Cells("Height").Result(visio::unitsInches).or_(0);
  const Shape arch = task.DrawLine(0, height, width, height);
  // It stays on the Task's upper edge when the Task is resized.
  for (const char* y : {"BeginY", "EndY"}) arch.Cells(y).FormulaForce("guard(" + cellOfTask(task, "Height") + ")");
  arch.Cells("EndX").FormulaForce("guard(" + cellOfTask(task, "Width") + ")");
  arch.SetRowType(visio::sectionFirstComponent, 2, visio::tagEllipticalArcTo);
  setFormulas(arch, {{"Geometry1.A2", "0.9"},
                     {"Geometry1.B2", "0.3"},
                     {"Geometry1.C2", "90 deg"},
                     {"Geometry1.D2", "0.9"},
                     {"Geometry1.NoFill", "False"},
                     {"TxtPinY", "0.15"},
                     {"TxtWidth", "Width*0.7"}});
  arch.Characters().AddCustomField("=" + cellOfTask(task, taskCells::responsibleRole), 0);
  addHyperlinkAction(arch);
  restoreHyperlinks(arch, keptHyperlinks(task, schema::responsibleRole));
  for (const char* cell : {"FillForegnd", "FillPattern", "LinePattern", "LineWeight", "LineColor", "LineCap"}) {
    tieToTask(arch, task, cell);
  }
  arch.Cells("TextBkgnd").FormulaForce("0");
  constexpr std::size_t longestAtFullSize = 20;
  arch.Cells("Char.Size[1]").FormulaForce(lengthOf(role) > longestAtFullSize ? "guard(7 pt)" : "guard(8 pt)");
  markDetail(arch, detailLayerOf(task), tags::responsibleRole, taskCells::responsibleRole.name());
}

void drawFrequency(const Shape& task) {
  if (!isOn(task, switches::frequency) || textOf(task, taskCells::frequency).empty()) return;
  const Shape label = task.DrawRectangle(0.1, 0, 0.2, 0.167);
  label.SetStyle("Text Only");
  label.Cells("FillForegndTrans").FormulaForce("100%");
  label.Characters().AddCustomField("=" + cellOfTask(task, taskCells::frequencyAbbreviation), 0);
  setFormulas(label, {{"Width", "Guard(0.4)"},
                      {"Height", "Guard(0.167)"},
                      {"PinX", "Guard(0.15)"},
                      {"PinY", "Guard(0.0835)"},
                      {"RightMargin", "0"},
                      {"LeftMargin", "0"},
                      {"Char.Size[1]", "guard(8 pt)"},
                      {"LockSelect", "1"},
                      {"LockFormat", "1"}});
  markDetail(label, detailLayerOf(task), tags::frequency);
}

void drawCompletionTime(const Shape& task) {
  if (!isOn(task, switches::completionTime) || timeNumber(task) == 0) return;
  const Shape label = task.DrawRectangle(0.5, 0, 0.7, 0.167);
  label.SetStyle("Text Only");
  setFormulas(label, {{"Para.HorzAlign[1]", "0"},
                      {"FillForegndTrans", "100%"},
                      {"Width", "Guard(0.5)"},
                      {"Height", "Guard(0.167)"},
                      {"PinX", "Guard(0.5)"},
                      {"PinY", "Guard(0.0835)"},
                      {"LeftMargin", "0"},
                      {"RightMargin", "0"}});
  label.Characters().AddCustomField("=" + cellOfTask(task, taskCells::shownTime), 0);
  label.Cells("Fields.Format[1]").FormulaForce(getFormatText(task));
  setFormulas(label, {{"Char.Size[1]", "guard(8 pt)"}, {"LockSelect", "1"}, {"LockFormat", "1"}});
  markDetail(label, detailLayerOf(task), tags::completionTime);
}

}  // namespace

void drawTaskUpperField(const Shape& task, std::string_view field) {
  if (field == tags::responsibleRole) drawResponsibleRole(task);
  if (field == tags::frequency) drawFrequency(task);
  if (field == tags::completionTime) drawCompletionTime(task);
}

void deleteTaskUpperField(const Shape& task, std::string_view field) {
  ListRows untouched;
  deleteDetails(task, {&field, 1}, untouched);
}

}  // namespace quorvel::addin
