// Where two maps differ, shape by shape and cell by cell: what the cells show and their formulas, whether a shape has
// them itself or from its master. Members of Tasks are compared by what they show, because they are redrawn.
#pragma once

#include <map>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"

namespace quorvel {

class MapComparison {
 public:
  /// Each as "page/shape/cell: what the first one has | what the second one has".
  static std::vector<std::string> differences(host::InMemoryHost& running, const Document& a, const Document& b) {
    MapComparison comparison(running);
    const host::Store& store = comparison.store_;
    const host::Document &first = *store.document(host::DocumentId{a.ref().id}),
                         &second = *store.document(host::DocumentId{b.ref().id});
    comparison.compare("document", first.sheet, second.sheet);
    comparison.note("document", "protection", std::to_string(first.protection), std::to_string(second.protection));
    comparison.note("document", "pages", std::to_string(first.pages.size()), std::to_string(second.pages.size()));
    for (std::size_t i = 0; i < std::min(first.pages.size(), second.pages.size()); ++i)
      comparison.comparePages(*store.page(first.pages[i]), *store.page(second.pages[i]));
    return std::move(comparison.found_);
  }

 private:
  explicit MapComparison(host::InMemoryHost& running) : host_(running), store_(running.engine().store()) {}

  void note(const std::string& path, const std::string& what, const std::string& a, const std::string& b) {
    if (a != b) found_.push_back(path + "/" + what + ": " + a + " | " + b);
  }

  Shape handle(host::SheetId sheet) { return {&host_, ObjectRef{ObjectKind::Shape, sheet.value}}; }

  /// Shapes without marks keep their numbers; the others are known by what they show.
  std::string labelOf(host::SheetId id) const {
    const host::Sheet& sheet = *store_.sheet(id);
    const std::string data = sheet.data1 + " " + sheet.data2 + " " + sheet.data3;
    return sheet.parent && data.size() > 2 ? data : "shape " + std::to_string(sheet.shapeId);
  }
  std::map<std::string, host::SheetId> labelled(const std::vector<host::SheetId>& shapes) const {
    std::map<std::string, host::SheetId> all;
    for (const host::SheetId shape : shapes) {
      std::string label = labelOf(shape);
      while (all.contains(label)) label += "'";
      all[label] = shape;
    }
    return all;
  }

  void comparePages(const host::Page& a, const host::Page& b) {
    note("page", "name", a.name, b.name);
    compare(a.name, a.sheet, b.sheet);
    compareShapes(a.name, a.shapes, b.shapes);
  }
  void compareShapes(const std::string& path, const std::vector<host::SheetId>& a,
                     const std::vector<host::SheetId>& b) {
    const auto first = labelled(a), second = labelled(b);
    for (const auto& [label, shape] : first) {
      const auto other = second.find(label);
      if (other == second.end()) {
        note(path, label, "there", "missing");
        continue;
      }
      const std::string below = path + "/" + label;
      compare(below, shape, other->second);
      const Shape one = handle(shape), two = handle(other->second);
      if (!store_.sheet(shape)->parent) note(below, "name", one.Name().or_("?"), two.Name().or_("?"));
      note(below, "text", one.Text().or_("?"), two.Text().or_("?"));
      note(below, "layers", std::to_string(one.LayerCount().or_(-1)), std::to_string(two.LayerCount().or_(-1)));
      compareShapes(below, store_.sheet(shape)->children, store_.sheet(other->second)->children);
    }
    for (const auto& [label, shape] : second)
      if (!first.contains(label)) note(path, label, "missing", "there");
  }

  void compare(const std::string& path, host::SheetId a, host::SheetId b) {
    const auto first = cellsOf(a), second = cellsOf(b);
    std::map<std::string, host::CellKey> all = first;
    all.insert(second.begin(), second.end());
    for (const auto& [name, key] : all) {
      const auto text = [&](const auto& cells, host::SheetId sheet) {
        const auto own = cells.find(name);
        if (own != cells.end()) return contents(sheet, own->second);
        return key.section == host::SectionNumber::Object ? contents(sheet, key) : std::string("missing");
      };
      note(path, name, text(first, a), text(second, b));
    }
  }

  /// The cells that the sheet or one of its masters has, by name; rows without a name go by their place.
  std::map<std::string, host::CellKey> cellsOf(host::SheetId sheet) const {
    std::map<std::string, host::CellKey> all;
    for (host::SheetId at = sheet; at; at = store_.sheet(at)->prototype) {
      for (const host::Section& section : store_.sheet(at)->sections) {
        for (const host::Row& row : section.rows) {
          const auto place = placeOf(sheet, section.number, row.key);
          if (!place) continue;
          for (const auto& [column, cell] : row.cells) {
            const host::CellKey key{section.number, row.key, column};
            all[host::cellName({section.number, *place, column}, host::spelling(row.name))] = key;
          }
        }
      }
    }
    return all;
  }
  Maybe<host::RowKey> placeOf(host::SheetId sheet, host::SectionNumber section, host::RowKey row) const {
    if (section == host::SectionNumber::Object) return row;
    const std::vector<host::RowView> rows = host::rowsOf(store_, sheet, section);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const bool goesByName = section == host::SectionNumber::User || section == host::SectionNumber::Property;
      if (rows[i].key == row) return goesByName ? row : host::RowKey::index(static_cast<std::uint32_t>(i));
    }
    return {};
  }

  std::string contents(host::SheetId sheet, const host::CellKey& key) const {
    std::string text = host::formulaFor(store_, sheet, host::findCell(store_, sheet, key)) + " : " +
                       host::cellText(store_, sheet, key);
    static const std::regex number("[Ss]heet\\.([0-9]+)");
    std::string withLabels;
    std::smatch match;
    while (std::regex_search(text, match, number)) {
      const host::SheetId named = host::resolveShapeId(store_, sheet, sheet, std::stoi(match[1]));
      withLabels += match.prefix().str() + (named ? "<" + labelOf(named) + ">" : match[0].str());
      text = match.suffix();
    }
    return withLabels + text;
  }

  host::InMemoryHost& host_;
  const host::Store& store_;
  std::vector<std::string> found_;
};

}  // namespace quorvel
