#include "vocab/chosen_entries.h"

#include <algorithm>
#include <array>

#include "base/basic_text.h"
#include "base/text.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

constexpr std::string_view timeUnits = "Prop.Time_Units";
constexpr std::array<std::string_view, 7> chosenCells{
    "Prop.SupportingRole_1",
    "Prop.SupportingRole_2",
    "Prop.SupportingRole_3",
    "Prop.SupportingRole_4",
    "Prop.Frequency_Of_Occurrence",
    "Prop.Responsible_Role",
    timeUnits,
};

}  // namespace

bool isChosenFromList(std::string_view cellName) {
  return std::ranges::any_of(chosenCells, [&](std::string_view cell) { return equalIgnoringCase(cell, cellName); });
}

void replaceIndexByEntry(const Shape& shape, const Cell& cell, std::string_view cellName) {
  const Maybe<std::string> formula = cell.Formula();
  if (!formula || formula->find("INDEX") == std::string::npos) return;
  const Maybe<std::string> list = shape.Cells(std::string(cellName) + ".Format").ResultStr(visio::unitsNone);
  if (!list) return;
  // The host counts from 0. Lists with a blank first entry lose it in `parse`; the units have none.
  const int place = funcIndex(*formula) + (equalIgnoringCase(cellName, timeUnits) ? 1 : 0);
  cell.FormulaForce(quoted(slot(parse(*list, ";"), place - 1).or_({})));
}

}  // namespace quorvel::addin
