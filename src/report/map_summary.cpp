#include "report/map_summary.h"

#include "base/text.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::report {
namespace {

using namespace host;

class Reader {
 public:
  explicit Reader(const Store& store) : store_(store) {}

  PageSummary page(PageId id) const {
    const Page& page = *store_.page(id);
    PageSummary summary;
    summary.name = page.name;
    summary.background = page.background;
    summary.shapeCount = static_cast<int>(page.shapes.size());
    for (const SheetId shape : page.shapes) {
      const std::string kind = className(shape);
      if (kind == "Task") summary.tasks.push_back(task(shape));
      if (kind == "Task Link") summary.links.push_back(link(page, shape));
      if (kind == "Connector" || kind == "Process Connector") summary.connectors.push_back(connector(shape));
      for (const SheetId each : store_.subtree(shape)) addHyperlinks(each, shape, summary.hyperlinks);
    }
    return summary;
  }

 private:
  std::string text(SheetId sheet, std::string_view cell) const {
    const Maybe<CellKey> key = parseCellName(cell);
    return key && cellExists(store_, sheet, *key, false) ? cellText(store_, sheet, *key) : std::string();
  }

  /// The master's name up to the first ".", as the add-in tells the classes apart.
  std::string className(SheetId shape) const {
    const Master* master = store_.master(store_.sheet(shape)->master);
    return master ? master->name.substr(0, master->name.find('.')) : std::string();
  }

  /// A time cell shows its last value and unit; a time of zero is no time.
  std::string duration(SheetId sheet, std::string_view cell) const {
    const Maybe<CellKey> key = parseCellName(cell);
    if (!key || !cellExists(store_, sheet, *key, false)) return {};
    const Value value = cellValue(store_, sheet, *key);
    return value.asNumber().or_(0) > 0 ? value.asText() : std::string();
  }

  TaskSummary task(SheetId shape) const {
    TaskSummary task;
    task.shapeId = store_.sheet(shape)->shapeId;
    task.id = text(shape, "Prop.Task_ID");
    task.description = text(shape, "Prop.Task_Description");
    task.responsibleRole = text(shape, "Prop.Responsible_Role");
    for (int n = 1; n <= 4; ++n) {
      const std::string role = text(shape, "Prop.SupportingRole_" + std::to_string(n));
      if (!role.empty()) task.supportingRoles.push_back(role);
    }
    task.completionTime = duration(shape, "Prop.Task_Completion_Time");
    task.frequency = text(shape, "Prop.Frequency_Of_Occurrence");
    task.linkedTask = text(shape, "Prop.Linked");
    return task;
  }

  LinkSummary link(const Page& page, SheetId shape) const {
    LinkSummary link;
    link.shapeId = store_.sheet(shape)->shapeId;
    link.description = text(shape, "Prop.Task_Link");
    link.time = duration(shape, "Prop.Time_Between_Tasks");
    for (const Connect& connect : page.connects) {
      if (connect.fromShape != link.shapeId) continue;
      const auto target = page.byShapeId.find(connect.toShape);
      if (target == page.byShapeId.end()) continue;
      if (startsWithIgnoringCase(connect.fromCell, "Begin")) link.from = label(topOf(target->second));
      if (startsWithIgnoringCase(connect.fromCell, "End")) link.to = label(topOf(target->second));
    }
    return link;
  }

  ConnectorSummary connector(SheetId shape) const {
    ConnectorSummary connector;
    connector.shapeId = store_.sheet(shape)->shapeId;
    connector.shownId = text(shape, "Prop.Connecting_TaskID");
    const auto rows = rowsOf(store_, shape, SectionNumber::Hyperlink);
    if (!rows.empty()) {
      const std::string address = hyperlinkText(shape, rows.front().key, "Address");
      const std::string sub = hyperlinkText(shape, rows.front().key, "SubAddress");
      connector.target = address + (address.empty() || sub.empty() ? "" : "#") + sub;
    }
    return connector;
  }

  SheetId topOf(SheetId shape) const {
    while (store_.sheet(shape)->parent) shape = store_.sheet(shape)->parent;
    return shape;
  }

  std::string label(SheetId shape) const {
    const std::string kind = className(shape);
    const std::string id = kind == "Task" ? text(shape, "Prop.Task_ID") : text(shape, "Prop.Connecting_TaskID");
    return id.empty() ? store_.shapeName(*store_.sheet(shape)) : id;
  }

  std::string hyperlinkText(SheetId sheet, RowKey row, std::string_view column) const {
    return cellText(store_, sheet, {SectionNumber::Hyperlink, row, columnOf(SectionNumber::Hyperlink, column).or_(0)});
  }

  void addHyperlinks(SheetId sheet, SheetId top, std::vector<HyperlinkSummary>& out) const {
    for (const RowView& row : rowsOf(store_, sheet, SectionNumber::Hyperlink)) {
      out.push_back({label(top), hyperlinkText(sheet, row.key, "Description"), hyperlinkText(sheet, row.key, "Address"),
                     hyperlinkText(sheet, row.key, "SubAddress")});
    }
  }

  const Store& store_;
};

}  // namespace

MapSummary summarize(const Store& store, DocumentId id) {
  const Document& document = *store.document(id);
  MapSummary summary;
  summary.title = document.properties.title;
  summary.templateName = document.properties.templateName;
  summary.isStencil = document.isStencil;
  summary.isProcessMap = !document.isStencil && containsIgnoringCase(summary.templateName, "Quorvel");
  for (const MasterId master : document.masters) summary.masters.push_back(store.master(master)->name);
  const Reader reader(store);
  for (const PageId page : document.pages) summary.pages.push_back(reader.page(page));
  return summary;
}

}  // namespace quorvel::report
