#include "shapes/task_id_change.h"

#include <string>

#include "links/follow_id_changes.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"

namespace quorvel::addin {

void taskIdChanged(const dsrVisioConnect& connect, const Shape& task) {
  const Maybe<std::string> before = task.Name(), now = task.Cells(schema::taskCells::id).ResultStr(visio::unitsNone);
  // Without an ID no hyperlink can name the Task; one to its page alone must not be taken for one of its own.
  if (!before || !now || before->empty() || now->empty() || *before == *now) return;
  if (!(connect.numberedTask == task)) {
    const IdChanges change({{*before, *now}});
    forEachShape(task.Document(), [&](const Shape& shape) { followIdChanges(shape, change); });
  }
  task.SetName(*now);
}

}  // namespace quorvel::addin
