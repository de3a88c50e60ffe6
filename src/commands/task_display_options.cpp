#include "commands/task_display_options.h"

#include "commands/display_scope.h"
#include "connect/host_queries.h"
#include "connect/undo_step.h"
#include "dialogs/frm_task_display_option.h"
#include "display/task_details.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

constexpr std::span<const schema::TaskSwitch> switches = schema::boxedTaskSwitches();

}  // namespace

int commonTaskSwitch(const DisplayTarget& target, std::string_view cellName) {
  return commonSwitch(target, cellName, isWholeTask);
}

void applyTaskDisplayOptions(const dsrVisioConnect& connect, const DisplayTarget& target, const TaskSwitchBoxes& boxes,
                             std::string_view scope) {
  const UndoStep step(connect.gvsoApp, "Task Display Options");
  for (const Page& page : pagesInScope(target, scope)) writeSwitches(page.PageSheet(), switches, boxes);
  for (const Shape& task : shapesInScope(target, scope, isWholeTask)) {
    // A scope for each Task, so that the host frees the changes of its shapes at the end of each one.
    const UndoStep drawing(connect.gvsoApp, "Task Details");
    writeSwitches(task, switches, boxes);
    redrawAllTaskFields(connect, task);
  }
}

void cbrBtnTaskDisplayOption_Click(dsrVisioConnect& connect) {
  const DisplayTarget target = shownNow(connect);
  if (!isForeground(target.page)) return;
  frmTaskDisplayOption dialog(connect.platform);
  dialog.offerSelection(!target.selected.empty());
  for (std::size_t i = 0; i < switches.size(); ++i) dialog.setBox(i, commonTaskSwitch(target, switches[i].cell));
  connect.platform.showModal(dialog);
  if (dialog.cancelled()) return;
  TaskSwitchBoxes boxes{};
  for (std::size_t i = 0; i < boxes.size(); ++i) boxes[i] = dialog.box(i);
  applyTaskDisplayOptions(connect, target, boxes, dialog.scope());
}

}  // namespace quorvel::addin
