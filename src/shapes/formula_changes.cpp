#include "shapes/formula_changes.h"

#include "base/text.h"
#include "connect/host_queries.h"
#include "links/task_link_description.h"
#include "schema/cells.h"
#include "sheets/shape_classes.h"
#include "vocab/chosen_entries.h"
#include "vocab/time_units.h"

namespace quorvel::addin {

void gvsoApp_FormulaChanged(dsrVisioConnect& connect, const Cell& cell) {
  const std::string name = cell.Name().or_({});
  if (equalIgnoringCase(name, schema::taskCells::completionTime)) captureCompletionTime(cell.Shape());
  if (equalIgnoringCase(name, schema::taskLinkCells::time)) {
    const Shape link = cell.Shape();
    if (!IsTaskLink(link)) return;
    if (cell.ResultIU() != 0) getTimeunit(link);
    GetAddedTaskLinkDescription2(link);
  }
  if (isChosenFromList(name) && getVisioVersion(connect) == "2007") replaceIndexByEntry(cell.Shape(), cell, name);
}

}  // namespace quorvel::addin
