#include "vocab/chosen_entries.h"

#include <algorithm>

#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

bool isNamed(const schema::NamedRow& row, std::string_view cellName) { return equalIgnoringCase(row, cellName); }

}  // namespace

bool isChosenFromList(std::string_view cellName) {
  return isNamed(schema::taskCells::frequency, cellName) || isNamed(schema::timeCells::unit, cellName) ||
         std::ranges::any_of(schema::taskCells::roles,
                             [&](const schema::NamedRow& role) { return isNamed(role, cellName); });
}

void replaceIndexByEntry(const Shape& shape, const Cell& cell, std::string_view cellName) {
  const Maybe<std::string> formula = cell.Formula();
  if (!formula || formula->find("INDEX") == std::string::npos) return;
  const Maybe<std::string> list = shape.Cells(std::string(cellName) + ".Format").ResultStr(visio::unitsNone);
  if (!list) return;
  // The host's index is 0-based. `parse` drops the blank first entry that all lists but the units have.
  const int place = funcIndex(*formula) + (isNamed(schema::timeCells::unit, cellName) ? 1 : 0);
  cell.FormulaForce(quoted(slot(parse(*list, ";"), place - 1).or_({})));
}

}  // namespace quorvel::addin
