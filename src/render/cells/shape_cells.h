// Reads one sheet's cells as a picture needs them.
#pragma once

#include <string>

#include "host/sheet/inheritance.h"
#include "render/cells/cell_keys.h"

namespace quorvel::render {

/// A cell whose value is in the theme has this text instead of a value.
inline bool isThemed(const host::Value& value) { return value.isText() && value.textView() == "Themed"; }

class ShapeCells {
 public:
  ShapeCells(const host::Store& store, host::SheetId sheet) : store_(store), sheet_(sheet) {}

  const host::Store& store() const { return store_; }
  host::SheetId sheet() const { return sheet_; }

  host::Value value(const host::CellKey& key) const { return host::cellValue(store_, sheet_, key); }
  /// Internal units. `fallback` where the cell reads as no number; themed cells are no numbers.
  double number(const host::CellKey& key, double fallback = 0) const { return value(key).asNumber().or_(fallback); }
  int integer(const host::CellKey& key, int fallback = 0) const;
  bool flag(const host::CellKey& key) const { return number(key) != 0; }
  bool held(const host::CellKey& key) const { return bool(host::findCell(store_, sheet_, key)); }
  /// The cell's number when a sheet holds it, else `otherwise`.
  double heldNumber(const host::CellKey& key, double otherwise) const;
  std::string text(const host::CellKey& key) const { return host::cellText(store_, sheet_, key); }

  static host::CellKey at(host::SectionNumber section, host::RowKey row, host::Column column) {
    return {section, row, column};
  }

 private:
  const host::Store& store_;
  host::SheetId sheet_;
};

}  // namespace quorvel::render
