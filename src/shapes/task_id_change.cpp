#include "shapes/task_id_change.h"

#include <string>

#include "base/ask_again.h"
#include "links/follow_id_changes.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"

namespace quorvel::addin {

void taskIdChanged(const dsrVisioConnect& connect, const Shape& task) {
  const auto id = [&] { return task.Cells(schema::taskCells::id).ResultStr(visio::unitsNone); };
  const Maybe<std::string> before = askAgain([&] { return task.Name(); }), now = askAgain(id);
  // Without an ID no hyperlink can name the Task; one to its page alone must not be taken for one of its own.
  if (!before || !now || before->empty() || now->empty() || *before == *now) return;
  if (!(connect.numberedTask == task)) {
    const IdChanges change({{*before, *now}});
    forEachShape(askAgain([&] { return task.Document(); }),
                 [&](const Shape& shape) { followIdChanges(shape, change); });
  }
  askAgain([&] { return task.SetName(*now); });
}

}  // namespace quorvel::addin
