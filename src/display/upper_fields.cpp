#include "display/upper_fields.h"

#include "base/basic_text.h"
#include "base/text.h"
#include "display/detail_fields.h"
#include "display/detail_shapes.h"
#include "display/field_hyperlinks.h"
#include "vocab/time_units.h"

namespace quorvel::addin {
namespace {

std::string textOf(const Shape& task, const char* cell) { return task.Cells(cell).ResultStr(visio::unitsNone).or_({}); }

bool isOn(const Shape& task, const char* switchCell) { return task.Cells(switchCell).Result(visio::unitsNone) == 1; }

void setFormulas(const Shape& shape, std::initializer_list<std::pair<const char*, const char*>> cells) {
  for (const auto& [cell, formula] : cells) shape.Cells(cell).FormulaForce(formula);
}

/// An arch over the Task, filled as the Task is.
void drawResponsibleRole(const Shape& task) {
  const std::string role = textOf(task, "Prop.Responsible_Role");
  if (!isOn(task, "User.Responsible_Role") || role.empty()) return;
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
  arch.Characters().AddCustomField("=" + cellOfTask(task, "Prop.Responsible_Role"), 0);
  addHyperlinkAction(arch);
  restoreHyperlinks(arch, keptHyperlinks(task, responsibleRole));
  for (const char* cell : {"FillForegnd", "FillPattern", "LinePattern", "LineWeight", "LineColor", "LineCap"}) {
    tieToTask(arch, task, cell);
  }
  arch.Cells("TextBkgnd").FormulaForce("0");
  constexpr std::size_t longestAtFullSize = 20;
  arch.Cells("Char.Size[1]").FormulaForce(lengthOf(role) > longestAtFullSize ? "guard(7 pt)" : "guard(8 pt)");
  markDetail(arch, detailLayerOf(task), "Responsible_Role", "Responsible_Role");
}

void drawFrequency(const Shape& task) {
  if (!isOn(task, "User.Frequency_Of_Occurrence") || textOf(task, "Prop.Frequency_Of_Occurrence").empty()) return;
  const Shape label = task.DrawRectangle(0.1, 0, 0.2, 0.167);
  label.SetStyle("Text Only");
  label.Cells("FillForegndTrans").FormulaForce("100%");
  label.Characters().AddCustomField("=" + cellOfTask(task, "Prop.Frequency_Partial"), 0);
  setFormulas(label, {{"Width", "Guard(0.4)"},
                      {"Height", "Guard(0.167)"},
                      {"PinX", "Guard(0.15)"},
                      {"PinY", "Guard(0.0835)"},
                      {"RightMargin", "0"},
                      {"LeftMargin", "0"},
                      {"Char.Size[1]", "guard(8 pt)"},
                      {"LockSelect", "1"},
                      {"LockFormat", "1"}});
  markDetail(label, detailLayerOf(task), "Frequency_Of_Occurrence");
}

void drawCompletionTime(const Shape& task) {
  if (!isOn(task, "User.Task_Completion_Time") || timeNumber(task) == 0) return;
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
  label.Characters().AddCustomField("=" + cellOfTask(task, "Prop.Process_Time_Str"), 0);
  label.Cells("Fields.Format[1]").FormulaForce(getFormatText(task));
  setFormulas(label, {{"Char.Size[1]", "guard(8 pt)"}, {"LockSelect", "1"}, {"LockFormat", "1"}});
  markDetail(label, detailLayerOf(task), "Task_Completion_Time");
}

}  // namespace

void drawTaskUpperField(const Shape& task, std::string_view field) {
  if (field == "Responsible_Role") drawResponsibleRole(task);
  if (field == "Frequency_Of_Occurrence") drawFrequency(task);
  if (field == "Task_Completion_Time") drawCompletionTime(task);
}

void deleteTaskUpperField(const Shape& task, std::string_view field) {
  ListRows untouched;
  deleteDetails(task, {&field, 1}, untouched);
}

}  // namespace quorvel::addin
