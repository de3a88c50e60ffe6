#include "cli/upgrade_changes.h"

#include <algorithm>

#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"
#include "report/process_map.h"

namespace quorvel::cli {
namespace {

using host::SheetId;
using host::Store;

/// Names and formulas of a sheet's own cells; values follow from them.
void addCells(const host::Sheet& sheet, std::string& text) {
  for (const host::Section& section : sheet.sections) {
    for (const host::Row& row : section.rows) {
      text += std::to_string(static_cast<int>(section.number)) + " " + std::to_string(row.key.packed()) +
              (row.deleted ? " deleted\n" : "\n");
      for (const auto& [column, cell] : row.cells)
        text += std::to_string(column) + "=" + (cell.inheritsFormula ? "" : host::formulaText(cell)) + "\n";
    }
  }
}

std::string contentsOf(const Store& store, SheetId shape) {
  std::string text;
  for (const SheetId each : store.subtree(shape)) {
    const host::Sheet& sheet = *store.sheet(each);
    text += std::to_string(sheet.shapeId) + " " + sheet.name + "|" + sheet.data1 + "|" + sheet.data2 + "|" +
            sheet.data3 + "\n";
    addCells(sheet, text);
  }
  return text;
}

int rowsOf(const host::Sheet& sheet) {
  int count = 0;
  for (const host::Section& section : sheet.sections) {
    if (section.number != host::SectionNumber::User && section.number != host::SectionNumber::Property &&
        section.number != host::SectionNumber::Action)
      continue;
    count += static_cast<int>(std::ranges::count_if(section.rows, [](const host::Row& row) { return !row.deleted; }));
  }
  return count;
}

SheetId withShapeId(const Store& store, const std::vector<SheetId>& shapes, int shapeId) {
  const auto found = std::ranges::find_if(shapes, [&](SheetId each) { return store.sheet(each)->shapeId == shapeId; });
  return found == shapes.end() ? SheetId{} : *found;
}

/// Rows that shapes have more than before, members included.
int rowsAdded(const Store& before, const std::vector<SheetId>& old, const Store& after,
              const std::vector<SheetId>& now) {
  int count = 0;
  for (const SheetId each : old) {
    const host::Sheet& sheet = *before.sheet(each);
    const SheetId other = withShapeId(after, now, sheet.shapeId);
    if (!other) continue;
    count += std::max(0, rowsOf(*after.sheet(other)) - rowsOf(sheet)) +
             rowsAdded(before, sheet.children, after, after.sheet(other)->children);
  }
  return count;
}

int recordsOf(const report::MapPage& page) {
  return static_cast<int>(
      std::ranges::count_if(page.hyperlinks, [](const report::Hyperlink& link) { return !link.record.empty(); }));
}

}  // namespace

std::vector<PageChanges> changesBetween(const Store& before, host::DocumentId fileDocument, const Store& after,
                                        host::DocumentId upgraded) {
  std::vector<PageChanges> all;
  const report::ProcessMap oldMap = report::readProcessMap(before, fileDocument),
                           newMap = report::readProcessMap(after, upgraded);
  for (std::size_t i = 0; i < std::min(oldMap.pages.size(), newMap.pages.size()); ++i) {
    const host::Page& old = *before.page(before.document(fileDocument)->pages[i]);
    const host::Page& now = *after.page(after.document(upgraded)->pages[i]);
    PageChanges changes;
    changes.page = now.name;
    std::string oldCells, nowCells;
    addCells(*before.sheet(old.sheet), oldCells);
    addCells(*after.sheet(now.sheet), nowCells);
    changes.pageCells = oldCells != nowCells;
    const auto isChanged = [&](const report::ShapeKey& shape) {
      const SheetId a = withShapeId(before, old.shapes, shape.shapeId),
                    b = withShapeId(after, now.shapes, shape.shapeId);
      return a && b && contentsOf(before, a) != contentsOf(after, b);
    };
    for (const report::Task& task : newMap.pages[i].tasks)
      if (isChanged(task.shape)) changes.tasks.push_back(task.id);
    for (const report::TaskLink& link : newMap.pages[i].links) changes.taskLinks += isChanged(link.shape);
    for (const report::ProcessConnector& connector : newMap.pages[i].connectors)
      changes.processConnectors += isChanged(connector.shape);
    changes.rowsAdded = std::max(0, rowsOf(*after.sheet(now.sheet)) - rowsOf(*before.sheet(old.sheet))) +
                        rowsAdded(before, old.shapes, after, now.shapes);
    changes.recordsAdded = std::max(0, recordsOf(newMap.pages[i]) - recordsOf(oldMap.pages[i]));
    if (changes.any()) all.push_back(std::move(changes));
  }
  return all;
}

}  // namespace quorvel::cli
