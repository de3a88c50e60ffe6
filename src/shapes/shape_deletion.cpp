#include "shapes/shape_deletion.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "connect/host_queries.h"
#include "display/task_marks.h"
#include "links/link_target.h"
#include "links/process_connector.h"
#include "links/sub_task_box.h"
#include "schema/cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {

/// What one deletion knows of its document. Many Tasks may be deleted at once, and the drawing is searched once for all
/// of them.
struct Deletion {
  Document document;
  std::unordered_set<std::uint32_t> selected;                    ///< of the document's window when the deletion began
  std::unordered_map<std::string, std::vector<Shape>> linkedTo;  ///< connectors and Tasks, by the ID in their links
  Shape last;                                                    ///< the Task that was looked at last

  bool covers(const Shape& shape) const { return selected.size() > 1 && selected.contains(shape.ref().id); }
};

namespace {

namespace connectorCells = schema::connectorCells;
namespace taskCells = schema::taskCells;

Shape subTaskBoxOf(const Shape& task) { return task.Shapes().Item(taskMember::subTaskBox); }

/// The links of a shape that are asked about: the first one of a connector, and all of a Task's sub-task box.
std::vector<Hyperlink> linksToTasks(const Shape& shape) {
  if (IsTask(shape)) return subTaskBoxOf(shape).Hyperlinks().all();
  if (!IsProcessConnector(shape)) return {};
  const Hyperlinks links = shape.Hyperlinks();
  return links.Count() > 0 ? std::vector<Hyperlink>{links.Item(0)} : std::vector<Hyperlink>{};
}

bool pointsTo(const Hyperlink& link, const std::string& id, const Document& document) {
  return linkTargetOf(link).taskId == id && !leadsElsewhere(link, document);
}

void note(Deletion& deletion, const Shape& shape) {
  std::unordered_set<std::string> noted;
  for (const Hyperlink& link : linksToTasks(shape)) {
    const std::string id = linkTargetOf(link).taskId;
    if (!id.empty() && !leadsElsewhere(link, deletion.document) && noted.insert(id).second)
      deletion.linkedTo[id].push_back(shape);
  }
}

std::shared_ptr<Deletion> begin(const dsrVisioConnect& connect, const Document& document) {
  const auto deletion = std::make_shared<Deletion>();
  deletion->document = document;
  for (const Shape& shape : windowOf(connect, document).Selection().all()) deletion->selected.insert(shape.ref().id);
  forEachShape(document, [&](const Shape& shape) { note(*deletion, shape); });
  return deletion;
}

/// The deletion that the shape is part of: it goes on from shape to shape while the selected ones are deleted. One that
/// was rolled back is over, and its shapes exist again.
std::shared_ptr<Deletion> deletionOf(dsrVisioConnect& connect, const Shape& shape, const Document& document) {
  const auto& current = connect.deletion;
  const bool goesOn = current && current->document == document && current->covers(shape) && !current->last.ID();
  auto deletion = goesOn ? current : begin(connect, document);
  if (!goesOn) connect.applyToAll = false;
  connect.deletion = deletion->covers(shape) ? deletion : nullptr;
  deletion->last = shape;
  return deletion;
}

void unlinkConnector(const Shape& connector) {
  connector.Cells(connectorCells::shownId).FormulaForce(quoted(connectorCells::noTarget));
  connector.SetName(connectorText(connectorCells::noTarget));
  connector.Hyperlinks().Item(0).Delete();
  restoreConnectorText(connector);
  // With a second hyperlink the connector has a target again; the host raises no event for it.
  changeProcessConnectorText(connector, connectorCallers::cellChange, {});
}

/// Without a hyperlink the box goes on showing the ID, until it gets another.
void unlinkSubTaskBox(const Shape& task, const std::string& id) {
  const Shape box = subTaskBoxOf(task);
  const std::vector<Hyperlink> links = box.Hyperlinks().all();
  for (auto link = links.rbegin(); link != links.rend(); ++link) {
    if (pointsTo(*link, id, box.Document())) link->Delete();
  }
  if (box.Hyperlinks().Count() == 0) removeSubTaskMark(task);
  // The host raises no event for the hyperlink that became the first one.
  showLinkedTask(task, box);
}

/// Of a Task that goes while its copy stays; no Task has it as its ID.
constexpr std::string_view replacedName = "  ";

/// The copy is equal to the Task: its place, ID and details, what links to it, and the unmarked state of a shape that
/// is not selected.
Shape replaceByCopy(dsrVisioConnect& connect, const Shape& task, const std::string& id) {
  const bool restored = std::exchange(connect.flagRestoringTask, true);
  // Not repeated when there is none: a handler may have deleted it.
  const Shape copy = task.Duplicate();
  connect.flagRestoringTask = restored;
  if (!copy) return copy;
  // The change of the copy's ID finds no hyperlink by this name.
  task.SetName(std::string(replacedName));
  const auto sheetOf = [&](int member) { return copy.Shapes().Item(member).NameID().or_({}); };
  const Cell height = copy.Cells("Height");
  const Maybe<double> before = height.ResultIU();
  const Maybe<std::string> formula = height.Formula();
  height.FormulaForce(sheetOf(taskMember::lowerBox) + "!Height + " + sheetOf(taskMember::descriptionBox) + "!Height");
  // In a drawing with an older master the boxes' heights follow that of the Task.
  if (!(height.ResultIU() == before)) height.FormulaForce(formula);
  copy.Cells(taskCells::id).FormulaForce(quoted(id));
  for (const char* cell : {"PinX", "PinY"})
    askAgain([&] { return copy.Cells(cell).FormulaForce(task.Cells(cell).Formula()); });
  askAgain([&] { return copy.SetName(id); });
  const Cell background = copy.Shapes().Item(taskMember::descriptionBox).Cells("TextBkgnd");
  if (background.Result(visio::unitsNone) != 0) background.FormulaForce("0");
  copy.UniqueID(visio::uniqueIdGetOrMake);
  return copy;
}

}  // namespace

void gvsoApp_BeforeShapeDelete(dsrVisioConnect& connect, const Shape& shape) {
  if (connect.deletesRefusedShapes || !isWholeTask(shape)) return;
  // A handler may delete the Task again before it is gone.
  if (shape.Name() == replacedName) return;
  const Document document = shape.Document();
  // A link to a page alone has an empty ID.
  const std::string id = shape.Cells(taskCells::id).ResultStr(visio::unitsNone).or_({});
  if (id.empty()) return;

  const std::shared_ptr<Deletion> deletion = deletionOf(connect, shape, document);
  std::vector<std::pair<Shape, bool>> linked;
  if (const auto found = deletion->linkedTo.find(id); found != deletion->linkedTo.end()) {
    // Links may have been removed with earlier shapes.
    for (const Shape& each : found->second) {
      for (const Hyperlink& link : linksToTasks(each)) {
        if (!pointsTo(link, id, document)) continue;
        linked.emplace_back(each, IsTask(each));
        break;
      }
    }
  }
  if (linked.empty()) return;

  const bool several = deletion->covers(shape);
  connect.DeleteShape = connect.DeleteShape || several;
  if (!connect.applyToAll && connect.keepsLinkedTask(connect, id, several)) {
    if (const Shape copy = replaceByCopy(connect, shape, id)) note(*deletion, copy);
    return;
  }
  for (const auto& [each, isTask] : linked) {
    if (isTask) {
      unlinkSubTaskBox(each, id);
    } else {
      unlinkConnector(each);
    }
  }
}

}  // namespace quorvel::addin
