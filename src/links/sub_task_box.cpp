#include "links/sub_task_box.h"

#include <string>

#include "base/basic_text.h"
#include "links/link_target.h"
#include "schema/cells.h"
#include "sheets/rows.h"

namespace quorvel::addin {

void showLinkedTask(const Shape& task, const Shape& box) {
  const Hyperlinks links = box.Hyperlinks();
  if (!(links.Count() > 0)) return;
  const Cell linked = task.Cells(schema::taskCells::linked);
  const Maybe<std::string> address = links.Item(0).SubAddress(), shown = linked.ResultStr(visio::unitsNone);
  if (!address || !shown) return;
  const std::string target = linkTarget(*address).taskId;
  if (lacksRow(box, schema::linkedCells::storedTaskId)) addRow(box, schema::linkedCells::storedTaskId);
  const Cell stored = box.Cells(schema::linkedCells::storedTaskId);
  const bool follows = stored.ResultStr(visio::unitsNone) == *shown || target == *shown;
  if (follows && address->empty()) return;
  if (follows) linked.FormulaForce(quoted(target));
  stored.FormulaForce(quoted(target));
}

}  // namespace quorvel::addin
