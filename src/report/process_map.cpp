#include "report/process_map.h"

#include <algorithm>
#include <unordered_map>

#include "base/text.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"
#include "schema/cells.h"
#include "schema/masters.h"

namespace quorvel::report {
namespace {

using host::CellKey;
using host::SectionNumber;
using host::SheetId;
using host::Store;
using schema::ShapeClass;

CellKey keyOf(std::string_view cell) { return host::parseCellName(cell).or_({}); }

std::string textOf(const Store& store, SheetId sheet, const CellKey& key) {
  return key && host::cellExists(store, sheet, key, false) ? host::cellText(store, sheet, key) : std::string();
}

/// A list in a cell has ";" between its entries, and often one before the first.
std::vector<std::string> entriesOf(const std::string& list) {
  std::vector<std::string> entries;
  for (std::size_t start = 0; start <= list.size();) {
    const std::size_t end = std::min(list.find(';', start), list.size());
    if (end > start) entries.push_back(list.substr(start, end - start));
    start = end + 1;
  }
  return entries;
}

class PageReader {
 public:
  PageReader(const Store& store, const host::Page& page, std::size_t index)
      : store_(store), page_(page), index_(index) {}

  MapPage read() {
    MapPage result;
    result.name = page_.name;
    result.background = page_.background;
    result.shapeCount = static_cast<int>(page_.shapes.size());
    result.taskIdLetters = text(page_.sheet, schema::pageCells::taskIdLetters);
    for (const host::Connect& connect : page_.connects) {
      Ends& ends = ends_[connect.fromShape];
      if (startsWithIgnoringCase(connect.fromCell, "Begin")) ends.begin = connect.toShape;
      if (startsWithIgnoringCase(connect.fromCell, "End")) ends.end = connect.toShape;
    }
    for (const SheetId shape : page_.shapes) {
      switch (classOf(shape)) {
        case ShapeClass::Task:
          result.tasks.push_back(task(shape));
          break;
        case ShapeClass::TaskLink:
          result.links.push_back(link(shape));
          break;
        case ShapeClass::ProcessConnector:
          result.connectors.push_back(connector(shape));
          break;
        case ShapeClass::Other:
          break;
      }
      addHyperlinks(shape, result.hyperlinks);
    }
    return result;
  }

 private:
  struct Ends {
    int begin = 0, end = 0;  ///< shape IDs; 0: loose
  };

  std::string text(SheetId sheet, std::string_view cell) const { return textOf(store_, sheet, keyOf(cell)); }

  ShapeClass classOf(SheetId shape) const { return classOfShape(store_, shape); }
  std::string label(SheetId shape) const { return labelOfShape(store_, shape); }

  ShapeKey shapeKey(SheetId shape) const { return {index_, store_.sheet(shape)->shapeId}; }

  /// A time of zero, or a text that is no time, counts as none.
  std::string duration(SheetId sheet, std::string_view cell) const {
    const CellKey key = keyOf(cell);
    if (!key || !host::cellExists(store_, sheet, key, false)) return {};
    const host::Value value = host::cellValue(store_, sheet, key);
    return value.asNumber().or_(0) > 0 ? value.asText() : std::string();
  }

  Task task(SheetId shape) const {
    Task task;
    task.shape = shapeKey(shape);
    task.uniqueId = store_.sheet(shape)->uniqueId;
    task.id = text(shape, schema::taskCells::id);
    task.description = text(shape, schema::taskCells::description);
    task.responsibleRole = text(shape, schema::taskCells::roles.front());
    for (std::size_t i = 1; i < schema::taskCells::roles.size(); ++i) {
      std::string role = text(shape, schema::taskCells::roles[i]);
      if (!role.empty()) task.supportingRoles.push_back(std::move(role));
    }
    task.guidelines = text(shape, schema::taskCells::guidelines);
    task.resources = text(shape, schema::taskCells::resources);
    task.completionTime = duration(shape, schema::taskCells::completionTime);
    task.frequency = text(shape, schema::taskCells::frequency);
    task.notes = text(shape, schema::taskCells::notes);
    task.linkedTask = text(shape, schema::taskCells::linked);
    return task;
  }

  TaskLink link(SheetId shape) const {
    TaskLink link;
    link.shape = shapeKey(shape);
    link.uniqueId = store_.sheet(shape)->uniqueId;
    link.description = text(shape, schema::taskLinkCells::description);
    link.time = duration(shape, schema::taskLinkCells::time);
    if (const auto ends = ends_.find(link.shape.shapeId); ends != ends_.end()) {
      link.from = linkEnd(ends->second.begin);
      link.to = linkEnd(ends->second.end);
    }
    return link;
  }

  LinkEnd linkEnd(int shapeId) const {
    const auto found = page_.byShapeId.find(shapeId);
    if (found == page_.byShapeId.end()) return {};
    const SheetId shape = outermost(found->second);
    LinkEnd end{LinkEnd::Kind::OtherShape, store_.sheet(shape)->shapeId, label(shape)};
    if (classOf(shape) == ShapeClass::Task) end.kind = LinkEnd::Kind::Task;
    if (classOf(shape) == ShapeClass::ProcessConnector) end.kind = LinkEnd::Kind::ProcessConnector;
    return end;
  }

  ProcessConnector connector(SheetId shape) const {
    ProcessConnector connector;
    connector.shape = shapeKey(shape);
    connector.uniqueId = store_.sheet(shape)->uniqueId;
    connector.shownId = text(shape, schema::connectorCells::shownId);
    const auto rows = host::rowsOf(store_, shape, SectionNumber::Hyperlink);
    if (!rows.empty()) {
      connector.address = hyperlinkText(shape, rows.front().key, "Address");
      connector.subAddress = hyperlinkText(shape, rows.front().key, "SubAddress");
    }
    return connector;
  }

  SheetId outermost(SheetId shape) const {
    while (store_.sheet(shape)->parent) shape = store_.sheet(shape)->parent;
    return shape;
  }

  CellKey hyperlinkCell(host::RowKey row, std::string_view column) const {
    return {SectionNumber::Hyperlink, row, host::columnOf(SectionNumber::Hyperlink, column).or_(0)};
  }

  std::string hyperlinkText(SheetId sheet, host::RowKey row, std::string_view column) const {
    return host::cellText(store_, sheet, hyperlinkCell(row, column));
  }

  void addHyperlinks(SheetId owner, std::vector<Hyperlink>& out) const {
    for (const SheetId shape : store_.subtree(owner)) {
      for (const host::RowView& row : host::rowsOf(store_, shape, SectionNumber::Hyperlink)) {
        Hyperlink link;
        link.shape = shapeKey(shape);
        link.ownerId = store_.sheet(owner)->shapeId;
        link.owner = label(owner);
        link.description = hyperlinkText(shape, row.key, "Description");
        link.address = hyperlinkText(shape, row.key, "Address");
        link.subAddress = hyperlinkText(shape, row.key, "SubAddress");
        link.extraInfo = hyperlinkText(shape, row.key, "ExtraInfo");
        link.record = hyperlinkText(shape, row.key, "Frame");
        link.isDefault = host::cellNumber(store_, shape, hyperlinkCell(row.key, "Default")) != 0;
        out.push_back(std::move(link));
      }
    }
  }

  const Store& store_;
  const host::Page& page_;
  std::size_t index_;
  std::unordered_map<int, Ends> ends_;
};

}  // namespace

ShapeClass classOfShape(const Store& store, SheetId shape) {
  // A shape whose master has no contents inherits nothing, and still is of its class.
  const host::MasterId own = store.sheet(shape)->master;
  const host::Master* master = store.master(own ? own : store.masterOf(shape));
  return master ? schema::classOfMaster(master->name) : ShapeClass::Other;
}

std::string labelOfShape(const Store& store, SheetId shape) {
  std::string id;
  if (classOfShape(store, shape) == ShapeClass::Task) id = textOf(store, shape, keyOf(schema::taskCells::id));
  if (classOfShape(store, shape) == ShapeClass::ProcessConnector) {
    id = textOf(store, shape, keyOf(schema::connectorCells::shownId));
  }
  return id.empty() ? store.shapeName(*store.sheet(shape)) : id;
}

ProcessMap readProcessMap(const Store& store, host::DocumentId id) {
  const host::Document& document = *store.document(id);
  ProcessMap map;
  map.title = document.properties.title;
  map.templateName = document.properties.templateName;
  map.isStencil = document.isStencil;
  map.isProcessMap = !document.isStencil && containsIgnoringCase(map.templateName, schema::productName);
  for (const host::MasterId master : document.masters) map.masters.push_back(store.master(master)->name);

  const auto list = [&](std::string_view cell) { return entriesOf(textOf(store, document.sheet, keyOf(cell))); };
  map.roles = list(schema::documentCells::roleNames);
  map.timeUnits = list(schema::documentCells::timeUnits);
  map.timeUnitAbbreviations = list(schema::documentCells::timeUnitAbbreviations);
  map.frequencies = list(schema::documentCells::frequencies);
  map.frequencyAbbreviations = list(schema::documentCells::frequencies.column("Prompt"));

  for (const host::PageId page : document.pages) {
    map.pages.push_back(PageReader(store, *store.page(page), map.pages.size()).read());
  }
  return map;
}

std::string hyperlinkTarget(const std::string& address, const std::string& subAddress) {
  return address + (address.empty() || subAddress.empty() ? "" : "#") + subAddress;
}

}  // namespace quorvel::report
