// All changes of drawings: each function applies one exchange and gives it to the undo log. They cannot fail; commands
// check first.
#pragma once

#include <optional>
#include <utility>

#include "host/undo/undo_log.h"

namespace quorvel::host {

class Editor {
 public:
  Editor(const Exchanged& drawing, UndoLog& log)
      : drawing_(drawing), store_(drawing.store), log_(log), placements_(drawing.placements) {}

  /// Makes the row local first when it is only inherited.
  void setCell(const CellAddress& cell, std::optional<Cell> content);
  /// A recalculated value: the cell's own, or one beside an inherited formula.
  void setValue(const CellAddress& cell, const Value& value);
  void insertRow(SheetId sheet, SectionNumber section, std::size_t place, Row row);
  void removeRow(SheetId sheet, SectionNumber section, std::size_t place);
  /// Without a local name the row keeps the one it has.
  void setRowHead(SheetId sheet, SectionNumber section, std::size_t place, RowKey key, Atom name, std::uint8_t type,
                  std::optional<Atom> localName = std::nullopt);
  void replaceSection(SheetId sheet, SectionNumber number, std::optional<Section> content);
  /// `change` edits a copy of the fields.
  template <class Change>
  void setFields(SheetId sheet, Change change) {
    auto fields = fieldsOf(sheet);
    change(*fields);
    commit(SheetFieldsExchange{sheet, std::move(fields)});
  }
  template <class Change>
  void setPageFields(PageId page, Change change) {
    auto fields = fieldsOf(page);
    change(*fields);
    commit(PageFieldsExchange{page, std::move(fields)});
  }
  void addConnect(PageId page, Connect connect);
  /// Another one in its place.
  void replaceConnect(PageId page, std::size_t place, Connect connect);
  /// Those for which `isRemoved` is true.
  template <class Test>
  void removeConnects(PageId page, Test isRemoved) {
    const auto& connects = std::as_const(store_).page(page)->connects;
    for (std::size_t i = connects.size(); i-- > 0;) {
      if (isRemoved(connects[i])) commit(ConnectExchange{page, i, std::nullopt});
    }
  }
  /// The store, for objects in the making: documents and what is made of a document before the log knows it. What is
  /// made is handed to the log by one of the calls below.
  Store& making() { return store_; }
  /// The parts of a document that no step changes: its name and folder, its properties and its marks.
  Document& documentFields(DocumentId document) { return *store_.document(document); }

  /// What was just made becomes a change; its formulas follow what they read from here on.
  void shapeAdded(SheetId root);
  void pageAdded(PageId page);
  void masterAdded(MasterId master);
  void styleAdded(SheetId style);
  /// The formulas of a sheet in the making follow what they read.
  void watchFormulas(SheetId sheet) { drawing_.graph.addSheet(sheet); }
  void removeShape(SheetId root);
  void removePage(PageId page);
  void moveInStack(SheetId shape, std::size_t place);
  /// Into a group of the same page (null: to the top of the page), at the place of the stack there. Its cells are left
  /// as they are.
  void moveToGroup(SheetId shape, SheetId parent, std::size_t place);

 private:
  void commit(Exchange exchange);
  bool revive(SheetId sheet, SectionNumber section);
  void dropShown(const CellAddress& cell);
  std::unique_ptr<SheetFields> fieldsOf(SheetId sheet) const;
  std::unique_ptr<PageFields> fieldsOf(PageId page) const;

  const Exchanged drawing_;
  Store& store_;
  UndoLog& log_;
  PlacementJournal& placements_;
};

}  // namespace quorvel::host
