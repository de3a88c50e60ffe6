// Everything that a document of the engine holds as lines of text, so that the same drawing in two formats can be
// compared where the files cannot.
#pragma once

#include <string>
#include <vector>

#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::testing {

class StoreText {
 public:
  /// `asFilesTell` leaves out what no file contains: what fields showed at their last evaluation, and whether a text
  /// that only repeats the master's is the shape's own, and inherited values that single files list in styles.
  explicit StoreText(const host::Store& store, bool asFilesTell = false) : store_(store), asFilesTell_(asFilesTell) {}

  std::vector<std::string> of(host::DocumentId id) {
    const host::Document& document = *store_.document(id);
    const host::DocumentProperties& p = document.properties;
    add("properties " + p.title + "|" + p.subject + "|" + p.creator + "|" + p.company + "|" + p.keywords + "|" +
        p.description + "|" + p.templateName + "|" + p.timeCreated);
    for (const auto& [name, value] : p.custom) add("custom " + name + "=" + value);
    for (const auto& [index, rgb] : document.colours)
      add("colour " + std::to_string(index) + " " + std::to_string(rgb));
    for (const host::SheetId style : document.styles) sheet("style " + store_.sheet(style)->name, style);
    sheet("document", document.sheet);
    for (const host::MasterId master : document.masters) {
      const host::Master& one = *store_.master(master);
      const std::string name = "master " + std::to_string(one.fileId) + " " + one.name;
      add(name + "|" + one.universalName + "|" + one.uniqueId + "|" + one.baseId + "|" + one.prompt + "|" +
          (one.hidden ? "hidden" : ""));
      contents(name, one.contents);
    }
    for (const host::PageId page : document.pages) {
      const host::Page& one = *store_.page(page);
      const host::Page* const back = store_.page(one.backPage);
      const std::string name = "page " + std::to_string(one.fileId) + " " + one.name;
      add(name + "|" + one.universalName + (one.background ? "|background" : "|") + (back ? back->name : ""));
      contents(name, page);
    }
    return std::move(lines_);
  }

 private:
  void add(std::string line) { lines_.push_back(std::move(line)); }

  void contents(const std::string& name, host::PageId id) {
    const host::Page& page = *store_.page(id);
    sheet(name, page.sheet);
    for (const host::SheetId top : page.shapes) {
      for (const host::SheetId shape : store_.subtree(top))
        sheet(name + " shape " + std::to_string(store_.sheet(shape)->shapeId), shape);
    }
    for (const host::Connect& one : page.connects)
      add(name + " connect " + std::to_string(one.fromShape) + one.fromCell + std::to_string(one.fromPart) + " " +
          std::to_string(one.toShape) + one.toCell + std::to_string(one.toPart));
  }

  static std::string valueText(const host::Value& value) {
    return std::to_string(static_cast<int>(value.kind())) + ":" + value.asText() + "~" +
           std::to_string(static_cast<int>(value.unit()));
  }

  /// Actions and controls without a name get one in packages, by their number.
  static std::string nameOf(host::SectionNumber section, const host::Row& row) {
    const bool getsName = section == host::SectionNumber::Action || section == host::SectionNumber::Control;
    if (!row.key.isNamed()) return (getsName ? "Row_" : "") + std::to_string(row.key.index() + (getsName ? 1 : 0));
    const std::string name(host::spelling(row.name));
    return row.localName ? name + "(" + std::string(host::spelling(row.localName)) + ")" : name;
  }

  std::string textLine(const host::TextBody& body) const {
    std::string text;
    for (const host::TextPiece& piece : body) {
      text += "<" + std::to_string(piece.kind) + "," + std::to_string(piece.index) + ">";
      if (!asFilesTell_ || piece.kind != host::TextPiece::Field) text += piece.text;
    }
    return text;
  }

  void sheet(const std::string& name, host::SheetId id) {
    const host::Sheet& one = *store_.sheet(id);
    const auto number = [&](host::SheetId other) {
      const host::Sheet* const found = store_.sheet(other);
      return found ? std::to_string(found->shapeId) : std::string("-");
    };
    const host::Master* const master = store_.master(one.master);
    add(name + " kind " + std::to_string(static_cast<int>(one.kind)) + " " + one.name + "|" + one.universalName + "|" +
        one.uniqueId + " parent " + number(one.parent) + " prototype " + number(one.prototype) + " master " +
        (master ? std::to_string(master->fileId) : "-") + " styles " + number(one.lineStyle) + number(one.fillStyle) +
        number(one.textStyle) + " data " + one.data1 + "|" + one.data2 + "|" + one.data3);
    if (one.text) {
      const std::string text = textLine(*one.text);
      const host::TextBody* const masters = asFilesTell_ ? host::textOf(store_, one.prototype) : nullptr;
      if (!masters || textLine(*masters) != text) add(name + " text " + text);
    }
    if (one.foreign)
      add(name + " picture " + one.foreign->type + one.foreign->compression +
          std::to_string(one.foreign->bytes.size()));
    for (const host::Section& section : one.sections) {
      if (section.deleted) add(name + " section " + std::to_string(static_cast<int>(section.number)) + " deleted");
      for (const host::Row& row : section.rows) {
        const std::string rowName =
            name + " " + std::to_string(static_cast<int>(section.number)) + "." + nameOf(section.number, row);
        if (row.type != 0 || row.deleted)
          // A row that only hides the master's has no kind of its own; a file may have to name one.
          add(rowName + (row.deleted ? " deleted" : " type " + std::to_string(row.type)));
        for (const auto& [column, cell] : row.cells) {
          const host::CellKey key{section.number, row.key, column};
          if (asFilesTell_ && one.kind == host::SheetKind::Style && cell.inheritsFormula) continue;
          add(rowName + "." + std::string(host::columnName(key)) + " = " + valueText(cell.value) +
              (cell.noFormula         ? " none"
               : cell.inheritsFormula ? " inherited"
                                      : " " + host::formulaText(cell)));
        }
      }
    }
  }

  const host::Store& store_;
  const bool asFilesTell_;
  std::vector<std::string> lines_;
};

}  // namespace quorvel::formats::testing
