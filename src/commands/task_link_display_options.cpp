#include "commands/task_link_display_options.h"

#include "commands/display_scope.h"
#include "connect/host_queries.h"
#include "connect/undo_step.h"
#include "dialogs/task_link_display_option.h"
#include "links/task_link_description.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

constexpr std::span<const schema::LinkSwitch> switches(schema::linkSwitches);

}  // namespace

int commonTaskLinkSwitch(const DisplayTarget& target, std::string_view cellName) {
  return commonSwitch(target, cellName, IsTaskLink);
}

void applyTaskLinkDisplayOptions(const dsrVisioConnect& connect, const DisplayTarget& target,
                                 const TaskLinkSwitchBoxes& boxes, std::string_view scope) {
  const UndoStep step(connect.gvsoApp, "Task Link Display Options");
  for (const Page& page : pagesInScope(target, scope)) writeSwitches(page.PageSheet(), switches, boxes);
  for (const Shape& link : shapesInScope(target, scope, IsTaskLink)) {
    writeSwitches(link, switches, boxes);
    GetAddedTaskLinkDescription2(link);
  }
}

void cbrBtnTaskLinkDisplayOption_Click(dsrVisioConnect& connect) {
  const DisplayTarget target = shownNow(connect);
  if (!isForeground(target.page)) return;
  TaskLinkDisplayOption dialog(connect.platform);
  dialog.offerSelection(!target.selected.empty());
  for (std::size_t i = 0; i < switches.size(); ++i) dialog.setBox(i, commonTaskLinkSwitch(target, switches[i].cell));
  connect.platform.showModal(dialog);
  if (dialog.cancelled()) return;
  TaskLinkSwitchBoxes boxes{};
  for (std::size_t i = 0; i < boxes.size(); ++i) boxes[i] = dialog.box(i);
  applyTaskLinkDisplayOptions(connect, target, boxes, dialog.scope());
}

}  // namespace quorvel::addin
