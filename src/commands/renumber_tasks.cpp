#include "commands/renumber_tasks.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/basic_text.h"
#include "connect/host_queries.h"
#include "connect/undo_step.h"
#include "dialogs/frm_task_renumbering_option.h"
#include "links/follow_id_changes.h"
#include "links/link_target.h"
#include "links/process_connector.h"
#include "schema/cells.h"
#include "shapes/task_count.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"
#include "vocab/task_id.h"

namespace quorvel::addin {
namespace {

namespace pageCells = schema::pageCells;

std::string lastTwoOfId(const Shape& task) {
  return right(task.Cells(schema::taskCells::id).ResultStr(visio::unitsNone).or_({}), 2);
}

Shape firstTask(const std::vector<Shape>& shapes) {
  const auto task = std::ranges::find_if(shapes, isWholeTask);
  return task == shapes.end() ? Shape() : *task;
}

/// Hyperlinks follow all changes together, so the change of this one ID leaves them alone.
IdChange writeId(dsrVisioConnect& connect, const Shape& task, const std::string& id) {
  const Cell cell = task.Cells(schema::taskCells::id);
  IdChange change{task.Name().or_({}), id, false};
  if (cell.Formula() == quoted(id)) return change;
  const Shape outer = std::exchange(connect.numberedTask, task);
  change.moves = cell.SetFormula(quoted(id));
  connect.numberedTask = outer;
  return change;
}

void showTarget(const Shape& connector) {
  if (!IsProcessConnector(connector)) return;
  const Hyperlinks links = connector.Hyperlinks();
  if (links.Count() > 0 && !linkTargetOf(links.Item(0)).taskId.empty())
    changeProcessConnectorText(connector, connectorCallers::cellChange, {});
}

}  // namespace

void RenumberZNBShapes(dsrVisioConnect& connect, const DisplayTarget& target, const std::string& letters, long& number,
                       std::string_view scope) {
  std::vector<Shape> shapes;
  if (scope == displayScope::selected) shapes = target.selected;
  if (scope == displayScope::page) shapes = target.page.Shapes().all();
  const UndoStep step(connect.gvsoApp, "Renumber Tasks");
  std::vector<IdChange> changes;
  for (const Shape& task : shapes) {
    if (isWholeTask(task)) changes.push_back(writeId(connect, task, taskIdText(letters, number++)));
  }
  if (changes.empty()) return;
  // One walk for all Tasks: a walk for each would cost the square of the drawing.
  const IdChanges inOrder(std::move(changes));
  const Document document = target.page.Document();
  forEachShape(document, [&](const Shape& shape) { followIdChanges(shape, inOrder); });
  forEachShape(document, showTarget);
}

void cbrBtnRenumberTasks_Click(dsrVisioConnect& connect) {
  const DisplayTarget target = shownNow(connect);
  if (!isForeground(target.page) || !isMap(target.page.Document())) return;
  frmTaskRenumberingOption dialog(connect.platform);
  std::string number;
  const Shape selected = firstTask(target.selected);
  if (selected) {
    number = std::to_string(static_cast<long>(val(lastTwoOfId(selected))));
  } else if (const Shape onPage = firstTask(target.page.Shapes().all())) {
    number = lastTwoOfId(onPage);
  }
  dialog.suggest(getTaskLetterPartFromPageName(target.page), number, static_cast<bool>(selected));
  connect.platform.showModal(dialog);
  if (dialog.cancelled()) return;

  long next = dialog.number().or_(0);
  const UndoStep step(connect.gvsoApp, "Renumber Tasks");
  if (dialog.onlySelected()) {
    // The page's counter does not follow: a new Task may get the ID of one of these.
    RenumberZNBShapes(connect, target, dialog.letters(), next, displayScope::selected);
    return;
  }
  const Shape sheet = target.page.PageSheet();
  const double afterLast = static_cast<double>(next) + TaskCount(target.page.Shapes().all());
  sheet.Cells(pageCells::nextTaskId).SetResult(visio::unitsNone, afterLast);
  sheet.Cells(pageCells::taskIdLetters).FormulaForce(quoted(dialog.letters()));
  RenumberZNBShapes(connect, target, dialog.letters(), next, displayScope::page);
}

}  // namespace quorvel::addin
