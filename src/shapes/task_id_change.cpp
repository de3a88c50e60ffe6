#include "shapes/task_id_change.h"

#include <string>

#include "base/basic_text.h"
#include "links/link_target.h"
#include "links/process_connector.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

namespace connectorCells = schema::connectorCells;
namespace linkedCells = schema::linkedCells;
namespace taskCells = schema::taskCells;

struct NewId {
  std::string before, now;
};

/// True when the hyperlink named the old ID. `described` is the one whose description tells whether it is the address.
bool rewrite(const Hyperlink& link, const Hyperlink& described, const NewId& id) {
  const std::string address = link.SubAddress().or_({});
  const LinkTarget target = linkTarget(address);
  if (target.taskId != id.before) return false;
  const std::string rewritten = subAddressOf(target.page, id.now);
  link.SetSubAddress(rewritten);
  if (described.Description().or_({}).find(address) != std::string::npos) link.SetDescription(rewritten);
  return true;
}

Maybe<std::string> valueOf(const Shape& shape, std::string_view cell) {
  return shape.Cells(cell).ResultStr(visio::unitsNone);
}

void put(const Shape& shape, std::string_view cell, const std::string& text) {
  shape.Cells(cell).FormulaForce(quoted(text));
}

void rewriteConnector(const Shape& connector, const NewId& id) {
  const Hyperlinks links = connector.Hyperlinks();
  if (!(links.Count() > 0)) return;
  const Hyperlink first = links.Item(0);
  if (!rewrite(first, first, id)) return;
  addStoredTaskId(connector);
  const Maybe<std::string> shown = valueOf(connector, connectorCells::shownId);
  const bool follows =
      shown == connectorCells::noTarget || shown == "" || shown == valueOf(connector, linkedCells::storedTaskId);
  if (follows) put(connector, connectorCells::shownId, id.now);
  put(connector, linkedCells::storedTaskId, id.now);
  changeProcessConnectorTxtFont(connector);
}

void rewriteSubTaskBox(const Shape& task, const Shape& box, const NewId& id) {
  const Hyperlinks links = box.Hyperlinks();
  if (!(links.Count() > 0)) return;
  const Hyperlink first = links.Item(0);
  if (!rewrite(first, first, id)) return;
  if (lacksRow(box, linkedCells::storedTaskId)) addRow(box, linkedCells::storedTaskId);
  const Maybe<std::string> shown = valueOf(task, taskCells::linked);
  if (shown == id.now || shown == valueOf(box, linkedCells::storedTaskId)) put(task, taskCells::linked, id.now);
  put(box, linkedCells::storedTaskId, id.now);
}

void rewriteTask(const Shape& task, const NewId& id) {
  const std::vector<Hyperlink> own = task.Hyperlinks().all();
  // The first hyperlink's description decides for all of a Task's own.
  for (const Hyperlink& link : own) rewrite(link, own.front(), id);
  const std::vector<Shape> members = task.Shapes().all();
  for (const Shape& member : members) {
    if (!(member.Data1() == marks::detail)) continue;
    for (const Hyperlink& link : member.Hyperlinks().all()) rewrite(link, link, id);
  }
  if (members.size() >= taskMember::subTaskBox) rewriteSubTaskBox(task, members[taskMember::subTaskBox - 1], id);
}

}  // namespace

void taskIdChanged(const dsrVisioConnect& connect, const Shape& task) {
  const Maybe<std::string> before = task.Name(), now = valueOf(task, taskCells::id);
  // Without an ID no hyperlink can name the Task; one to its page alone must not be taken for one of its own.
  if (!before || !now || before->empty() || now->empty() || *before == *now) return;
  const NewId id{*before, *now};
  if (!(connect.numberedTask == task)) {
    forEachShape(task.Document(), [&](const Shape& shape) {
      if (IsProcessConnector(shape)) rewriteConnector(shape, id);
      if (IsTask(shape)) rewriteTask(shape, id);
    });
  }
  task.SetName(id.now);
}

}  // namespace quorvel::addin
