#include "sheets/shape_actions.h"

#include "base/basic_text.h"
#include "sheets/rows.h"

namespace quorvel::addin {

std::string hyperlinkAction(std::string_view separator) {
  return "RUNADDONWARGS(\"QueueMarkerEvent\"" + std::string(separator) + "\"/soln=Quorvel.Quorvel /cmd=1\")";
}

std::string menuWithAddin(std::string_view caption, std::string_view separator) {
  const std::string sep(separator);
  return "= IF(TheDoc!User.AddinIsFound=1" + sep + quoted(caption) + sep + "\"\")";
}

std::string disabledFormula(std::string_view separator) {
  const std::string sep(separator);
  return "= IF(TheDoc!User.DisableDefine=1" + sep + "1" + sep + "0)";
}

void setAction(const Shape& shape, int row, std::string_view action, std::string_view menu) {
  const std::string index = "[" + std::to_string(row) + "]";
  shape.Cells("Actions.Action" + index).FormulaForce(std::string(action));
  shape.Cells("Actions.Menu" + index).FormulaForce(std::string(menu));
}

void addConnectorActions(const Shape& connector, std::string_view separator) {
  addActionRow(connector);
  setAction(connector, 1, hyperlinkAction(separator), quoted("Define Connector Link..."));
  addActionRow(connector);
  setAction(connector, 2, shapeDataAction, menuWithAddin("Modify Connector Text...", separator));
  connector.Cells("Actions.D1").FormulaForce(disabledFormula(separator));
}

}  // namespace quorvel::addin
