// A drawing as text, line by line, so that two states can be compared: what its sheets hold themselves.
#pragma once

#include <string>
#include <string_view>

#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"

namespace quorvel {

class StoreDump {
 public:
  static std::string of(const host::Store& store, host::DocumentId document) {
    StoreDump dump(store);
    dump.addDocument(document);
    return std::move(dump.out_);
  }

  /// All documents of a host, with what is selected and how many toolbars there are.
  static std::string of(host::InMemoryHost& running) {
    host::Engine& engine = running.engine();
    StoreDump dump(engine.store());
    for (const host::DocumentId document : engine.store().documents()) dump.addDocument(document);
    for (const host::WindowState& window : engine.windows()) {
      dump.line(0, "window of " + number(window.document.value) + " shows " + number(window.page.value));
      for (const host::SheetId shape : window.selection()) dump.line(1, "selected " + number(shape.value));
    }
    return std::move(dump.out_);
  }

 private:
  explicit StoreDump(const host::Store& store) : store_(store) {}

  static std::string number(auto value) { return std::to_string(value); }
  void line(int depth, std::string_view text) { (out_.append(2 * depth, ' ') += text) += '\n'; }

  void addDocument(host::DocumentId id) {
    const host::Document& document = *store_.document(id);
    line(0, "document protection " + number(document.protection));
    addSections(*store_.sheet(document.sheet), 1);
    for (const host::SheetId style : document.styles) {
      line(1, "style " + store_.sheet(style)->name);
      addSections(*store_.sheet(style), 2);
    }
    for (const host::MasterId master : document.masters) {
      line(1, "master " + store_.master(master)->name + " " + number(master.value));
      for (const host::SheetId shape : store_.page(store_.master(master)->contents)->shapes)
        addShape(*store_.sheet(shape), 2);
    }
    for (const host::PageId pageId : document.pages) {
      const host::Page& page = *store_.page(pageId);
      const host::Page* back = store_.page(page.backPage);
      line(1, "page " + page.name + (page.background ? " background" : "") + (back ? " on " + back->name : ""));
      for (const host::Connect& connect : page.connects)
        line(2, "connect " + number(connect.fromShape) + "." + connect.fromCell + " to " + number(connect.toShape) +
                    "." + connect.toCell);
      addSections(*store_.sheet(page.sheet), 2);
      for (const host::SheetId shape : page.shapes) addShape(*store_.sheet(shape), 2);
    }
  }

  void addShape(const host::Sheet& shape, int depth) {
    const host::Master* master = store_.master(shape.master);
    line(depth, "shape " + number(shape.shapeId) + " kind " + number(static_cast<int>(shape.kind)) + " \"" +
                    shape.name + "\"" + (master ? " of " + master->name : "") + " from " +
                    number(shape.prototype.value) + " styles " + number(shape.lineStyle.value) + " " +
                    number(shape.fillStyle.value) + " " + number(shape.textStyle.value));
    if (!(shape.data1 + shape.data2 + shape.data3).empty())
      line(depth + 1, "data " + shape.data1 + " | " + shape.data2 + " | " + shape.data3);
    if (shape.text) {
      for (const host::TextPiece& piece : *shape.text)
        line(depth + 1, "text " + number(static_cast<int>(piece.kind)) + " " + number(piece.index) + " " + piece.text);
    }
    addSections(shape, depth + 1);
    for (const host::SheetId member : shape.children) addShape(*store_.sheet(member), depth + 1);
  }

  void addSections(const host::Sheet& sheet, int depth) {
    for (const host::Section& section : sheet.sections) {
      if (section.deleted) line(depth, "no section " + number(static_cast<int>(section.number)));
      for (const host::Row& row : section.rows) {
        line(depth, "row " + number(static_cast<int>(section.number)) + " " + number(row.key.packed()) + " " +
                        std::string(host::spelling(row.name)) + (row.deleted ? " deleted" : "") +
                        (row.type ? " type " + number(static_cast<int>(row.type)) : ""));
        for (const auto& [column, cell] : row.cells) {
          line(depth + 1, host::cellName({section.number, row.key, column}, host::spelling(row.name)) + " = " +
                              (cell.inheritsFormula ? "(inherited)" : host::formulaText(cell)) + " : " +
                              cell.value.asText() + " " + number(static_cast<int>(cell.value.kind())) + "/" +
                              number(static_cast<int>(cell.value.unit())) + (cell.noFormula ? " no formula" : ""));
        }
      }
    }
  }

  const host::Store& store_;
  std::string out_;
};

/// The first line in which two dumps differ, for a message; empty when they are equal.
inline std::string firstDifference(std::string_view a, std::string_view b) {
  if (a == b) return {};
  std::size_t at = 0, line = 0;
  while (at < a.size() && at < b.size() && a[at] == b[at]) ++at;
  line = a.substr(0, at).rfind('\n');
  line = line == std::string_view::npos ? 0 : line + 1;
  const auto lineOf = [&](std::string_view text) {
    return line < text.size() ? std::string(text.substr(line, text.find('\n', line) - line)) : std::string("(end)");
  };
  return "\"" + lineOf(a) + "\" against \"" + lineOf(b) + "\"";
}

}  // namespace quorvel
