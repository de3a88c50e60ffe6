#include "shapes/copied_shapes.h"

#include <algorithm>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "links/process_connector.h"
#include "schema/cells.h"
#include "schema/display_switches.h"
#include "shapes/give_task_id.h"
#include "shapes/initialize_znb_shapes.h"
#include "shapes/paste_batch.h"
#include "shapes/time_unit_display.h"
#include "sheets/protection.h"
#include "sheets/shape_classes.h"
#include "vocab/task_id.h"

namespace quorvel::addin {
namespace {

namespace taskCells = schema::taskCells;

bool holdsAnother(const Shapes& shapes, const Shape& one, std::string_view mark) {
  return std::ranges::any_of(shapes.all(), [&](const Shape& shape) {
    return (!(shape == one) && shape.Data1() == mark) || holdsAnother(shape.Shapes(), one, mark);
  });
}

/// The page is searched for the other one: the event of an imported picture comes before it gets its mark.
void copiedDecoration(const Shape& shape, const Page& page, std::string_view mark) {
  if (!holdsAnother(page.Shapes(), shape, mark)) return;
  deleteProtected(shape);
}

/// Once for all that is pasted together.
void checkTimeUnits(dsrVisioConnect& connect) {
  if (connect.timeUnitsChecked) return;
  connect.timeUnitsChecked = true;
  // The question may be answered by a script that pastes again, which replaces the batch meanwhile.
  const std::vector<Shape> pasted = connect.batchShapes;
  reconcileTimeUnits(connect, pasted);
}

/// The last two characters, read as digits whatever they are.
long keptNumber(std::string_view id) {
  const auto digit = [&](long fromEnd) {
    const std::string character = mid(id, static_cast<long>(lengthOf(id)) - fromEnd, 1);
    return static_cast<long>(val(character));
  };
  return digit(1) * 10 + digit(0);
}

/// What is asked once for all that is pasted together. False when the user refused.
bool askForIds(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  if (!connect.flagShapeAdded) return true;
  const bool isAll = areAllTasksOfPage(connect, page);
  if (connect.batchTasks > 1) {
    if (!connect.askCopiedTaskIds(connect, page)) return false;
    if (isAll) {
      const Shape sheet = page.PageSheet();
      sheet.Cells(schema::pageCells::taskIdLetters).FormulaForce(quoted(connect.strTaskIdLetters));
      sheet.Cells(schema::pageCells::nextTaskId).SetResult(visio::unitsNone, connect.iTaskIdNumber);
    }
  } else if (isAll && !connect.askTaskIds(connect, page)) {
    return false;
  }
  InitializeZNBShapes(connect, task, page);
  connect.flagShapeAdded = false;
  return true;
}

void giveId(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  if (connect.batchTasks <= 1) {
    giveNextTaskId(connect, task, page);
  } else if (connect.flagKeepTaskIdNumbers) {
    const Maybe<std::string> id = askAgain([&] { return task.Cells(taskCells::id).ResultStr(visio::unitsNone); });
    if (id) writeFirstTaskId(connect, task, taskIdText(connect.strTaskIdLetters, keptNumber(*id)));
  } else {
    // A number that could not be counted is not used, here or for the next copy.
    const std::string id = taskIdText(connect.strTaskIdLetters, connect.iTaskIdNumber);
    if (giveCountedTaskId(connect, task, page, id)) ++connect.iTaskIdNumber;
  }
}

bool showsTime(const Shape& link) {
  const auto value = [&](std::string_view cell) { return link.Cells(cell).Result(visio::unitsNone); };
  if (!(value(schema::switches::linkTime) == 1)) return false;
  return value(schema::switches::linkTimeAboveZero) != 0 || value(schema::taskLinkCells::time) > 0;
}

}  // namespace

void copiedTask(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  const HandledCopy handled(connect);
  joinPasteBatch(connect, task, page);
  if (task.Cells(schema::timeCells::unit).ResultStr(visio::unitsNone) != "") checkTimeUnits(connect);
  if (!mergeFrequency(connect, task, page)) return;
  mergeRoles(connect, task, page);
  const auto exists = [&] { return askAgain([&] { return task.ID(); }).has(); };
  if (!exists()) return;
  if (!askForIds(connect, task, page)) {
    deletePastedShapes(connect);
    return;
  }
  if (exists()) giveId(connect, task, page);
}

void copiedTaskLink(dsrVisioConnect& connect, const Shape& link, const Page& page) {
  const HandledCopy handled(connect);
  joinPasteBatch(connect, link, page);
  if (connect.batchShapes.size() > 1 || showsTime(link)) checkTimeUnits(connect);
  link.Cells("EventDrop").FormulaForce(quoted(""));
}

void copied(dsrVisioConnect& connect, const Shape& shape, const Page& page) {
  const std::string mark = shape.Data1().or_({});
  if (mark == marks::logo || mark == marks::legend) return copiedDecoration(shape, page, mark);
  if (!isTopLevel(shape)) return;
  if (askAgain([&] { return IsTask(shape); })) copiedTask(connect, shape, page);
  if (IsTaskLink(shape)) copiedTaskLink(connect, shape, page);
  if (IsProcessConnector(shape)) {
    const Maybe<std::string> shown = shape.Cells(schema::connectorCells::shownId).ResultStr(visio::unitsNone);
    if (shown) shape.SetName(connectorText(*shown));
  }
}

}  // namespace quorvel::addin
