#include "links/follow_id_changes.h"

#include <string>
#include <vector>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "links/link_target.h"
#include "links/process_connector.h"
#include "schema/cells.h"
#include "sheets/cell_writes.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

namespace connectorCells = schema::connectorCells;
namespace linkedCells = schema::linkedCells;
namespace taskCells = schema::taskCells;

// A hyperlink that is left out keeps an ID that no Task has, and no later change finds it, so refused calls are
// repeated.

std::string addressOf(const Hyperlink& link) {
  return askAgain([&] { return link.SubAddress(); }).or_({});
}

LinkText textOf(const Hyperlink& link, std::string address) {
  return {std::move(address), askAgain([&] { return link.Description(); }).or_({})};
}

void put(const Hyperlink& link, const LinkTarget& target, const std::string& end,
         const Maybe<std::string>& description) {
  askAgain([&] { return link.SetSubAddress(subAddressOf(target.page, end)); });
  if (description) link.SetDescription(description);
}

/// The ID that the shape's link names in the end; nothing when no change moves it, or when its target is no Task of
/// this drawing.
Maybe<std::string> endOf(const Shape& shape, const Hyperlink& link, const LinkTarget& target,
                         const IdChanges& changes) {
  const Maybe<std::string> end = changes.endOf(target.taskId);
  return end && leadsElsewhere(link, askAgain([&] { return shape.Document(); })) ? Maybe<std::string>() : end;
}

/// A hyperlink whose own description tells whether it is the address.
void rewrite(const Shape& shape, const Hyperlink& link, const IdChanges& changes) {
  const std::string address = addressOf(link);
  const LinkTarget target = linkTarget(address);
  const Maybe<std::string> end = endOf(shape, link, target, changes);
  if (end) put(link, target, *end, changes.descriptionOf(textOf(link, address)));
}

/// A Task's own hyperlinks: the description of the first one decides for all.
void rewriteOwn(const Shape& task, const IdChanges& changes) {
  const std::vector<Hyperlink> links = everyHyperlink(task);
  if (links.empty()) return;
  const LinkText first = textOf(links.front(), addressOf(links.front()));
  rewrite(task, links.front(), changes);
  for (auto link = links.begin() + 1; link != links.end(); ++link) {
    const std::string address = addressOf(*link);
    const LinkTarget target = linkTarget(address);
    const Maybe<std::string> end = endOf(task, *link, target, changes);
    if (end) put(*link, target, *end, changes.descriptionOf({address, {}}, first));
  }
}

Maybe<std::string> valueOf(const Shape& shape, std::string_view cell) {
  return shape.Cells(cell).ResultStr(visio::unitsNone);
}

/// The first hyperlink of the shape, and the ID of this drawing that it names; null and empty without one.
struct FirstLink {
  explicit FirstLink(const Shape& shape) {
    const std::vector<Hyperlink> links = everyHyperlink(shape);
    if (links.empty()) return;
    link = links.front();
    id = linkTarget(addressOf(link)).taskId;
    if (!id.empty() && leadsElsewhere(link, askAgain([&] { return shape.Document(); }))) id.clear();
  }
  Hyperlink link;
  std::string id;
};

void followWithConnector(const Shape& connector, const IdChanges& changes) {
  const FirstLink first(connector);
  if (!changes.concern(first.id)) return;
  addStoredTaskId(connector);
  const std::string typed = valueOf(connector, connectorCells::shownId).or_({});
  // An ID that the user typed counts as followed from the moment when the link has the same.
  const bool meets = changes.pass(first.id, typed, false);
  const Maybe<std::string> end = changes.endOf(first.id);
  if (!end) {
    if (meets) putText(connector, linkedCells::storedTaskId, typed);
    return;
  }
  rewrite(connector, first.link, changes);
  const Maybe<std::string> shown = valueOf(connector, connectorCells::shownId);
  const bool follows = meets || shown == connectorCells::noTarget || shown == "" ||
                       shown == valueOf(connector, linkedCells::storedTaskId);
  if (follows) putText(connector, connectorCells::shownId, *end);
  putText(connector, linkedCells::storedTaskId, *end);
  changeProcessConnectorTxtFont(connector);
}

void followWithSubTaskBox(const Shape& task, const Shape& box, const IdChanges& changes) {
  const FirstLink first(box);
  const Maybe<std::string> end = changes.endOf(first.id);
  if (!end) return;
  const bool meets = changes.pass(first.id, valueOf(task, taskCells::linked).or_({}), true);
  rewrite(box, first.link, changes);
  if (lacksRow(box, linkedCells::storedTaskId)) addRow(box, linkedCells::storedTaskId);
  if (meets || valueOf(task, taskCells::linked) == valueOf(box, linkedCells::storedTaskId))
    putText(task, taskCells::linked, *end);
  putText(box, linkedCells::storedTaskId, *end);
}

void followWithTask(const Shape& task, const IdChanges& changes) {
  rewriteOwn(task, changes);
  const std::vector<Shape> members = everyMember(task);
  for (const Shape& member : members) {
    if (!(askAgain([&] { return member.Data1(); }) == marks::detail)) continue;
    for (const Hyperlink& link : everyHyperlink(member)) rewrite(member, link, changes);
  }
  if (members.size() >= taskMember::subTaskBox)
    followWithSubTaskBox(task, members[taskMember::subTaskBox - 1], changes);
}

}  // namespace

void followIdChanges(const Shape& shape, const IdChanges& changes) {
  const schema::ShapeClass kind = schema::classOfMaster(askAgain([&] { return shape.Master().Name(); }).or_({}));
  if (kind == schema::ShapeClass::ProcessConnector) followWithConnector(shape, changes);
  if (kind == schema::ShapeClass::Task) followWithTask(shape, changes);
}

}  // namespace quorvel::addin
