#include "commands/task_display.h"

#include "commands/display_scope.h"
#include "connect/host_queries.h"
#include "connect/undo_step.h"
#include "dialogs/frm_task_display.h"
#include "display/detail_shapes.h"
#include "schema/display_switches.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

void moveDetails(const Shape& task, std::string_view from, std::string_view to) {
  const Page page = task.ContainingPage();
  const Layer before = detailLayer(page, from), after = detailLayer(page, to);
  for (const Shape& member : task.Shapes().all()) {
    if (!(member.Data1() == marks::detail)) continue;
    before.Remove(member, 1);
    after.Add(member, 1);
  }
}

}  // namespace

bool getCurrentDisplayState(const DisplayTarget& target, std::string_view masterName, std::string_view cell) {
  Shape asked = selectedShapeOfMaster(target.selected, masterName);
  if (!asked) asked = target.page.PageSheet();
  return asked.Cells(cell).Result(visio::unitsNone) != 0;
}

void applyTaskDisplay(const dsrVisioConnect& connect, const DisplayTarget& target, std::string_view scope) {
  const bool shown = getCurrentDisplayState(target, masters::task, schema::switches::taskDetails);
  const std::string_view from = shown ? detailLayers::visible : detailLayers::invisible;
  const std::string_view to = shown ? detailLayers::invisible : detailLayers::visible;
  const UndoStep step(connect.gvsoApp, "Task Display");
  for (const Page& page : pagesInScope(target, scope))
    writeSwitch(page.PageSheet(), schema::switches::taskDetails, shown ? 0 : 1);
  for (const Shape& task : shapesInScope(target, scope, isWholeTask)) {
    writeSwitch(task, schema::switches::taskDetails, shown ? 0 : 1);
    moveDetails(task, from, to);
  }
}

void cbrBtnTaskdisplay_Click(dsrVisioConnect& connect) {
  const DisplayTarget target = shownNow(connect);
  if (!isForeground(target.page)) return;
  frmTaskDisplay dialog(!getCurrentDisplayState(target, masters::task, schema::switches::taskDetails));
  dialog.offerSelection(!target.selected.empty());
  connect.platform.showModal(dialog);
  if (!dialog.cancelled()) applyTaskDisplay(connect, target, dialog.scope());
}

}  // namespace quorvel::addin
