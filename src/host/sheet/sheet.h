// A sheet: the cells of a document, page, style, or shape, with only what differs from what it inherits.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/cells/cell_key.h"
#include "host/formula/formula.h"
#include "host/formula/value.h"
#include "host/sheet/ids.h"

namespace quorvel::host {

/// What a file format keeps with an object so that a save writes what we don't understand. The engine only
/// carries it.
struct Extras {
  virtual ~Extras() = default;
};
using ExtrasPtr = std::shared_ptr<const Extras>;

/// A cell that a sheet holds itself.
struct Cell {
  /// Null for a cell whose formula is its value's own constant, and for one without a formula.
  FormulaPtr formula;
  Value value;
  /// The formula is the master's or the style's; only the value is held here ("F='Inh'" in files).
  bool inheritsFormula = false;
  /// A value without a formula: the file's "No Formula", or a put of that text.
  bool noFormula = false;
  /// The file lacks this value; it was computed on opening, and a save leaves it out as long as it has not changed.
  bool isComputed = false;
  ErrorCode fileError =
      ErrorCode::None;  ///< the file names this error beside the value; what recomputing is measured by

  friend bool operator==(const Cell& a, const Cell& b) {
    return a.formula == b.formula && a.value == b.value && a.inheritsFormula == b.inheritsFormula &&
           a.noFormula == b.noFormula;
  }
};

/// Formula text of a cell that holds one: as written, or the constant that gives its value.
std::string formulaText(const Cell& cell);

/// Cells of a row, sorted by column.
struct Row {
  RowKey key;
  Atom name;              ///< the name in the case of its creation; null for indexed rows
  Atom localName;         ///< what people read for it where that is another; null: the same
  std::uint8_t type = 0;  ///< Geometry: the number of a RowTag; else 0
  bool deleted = false;   ///< hides the master's row of the same key
  std::vector<std::pair<Column, Cell>> cells;
  ExtrasPtr extras;

  const Cell* find(Column column) const;
  Cell& at(Column column);  ///< made when missing
};

struct Section {
  SectionNumber number = SectionNumber::None;
  bool deleted = false;   ///< hides the master's section
  std::vector<Row> rows;  ///< in order; Geometry's component row, when held, is the one with key index 0
  ExtrasPtr extras;

  const Row* find(RowKey key) const;
  Row* find(RowKey key);
};

enum class SheetKind : std::uint8_t { Document, Page, Style, Shape, Group, Foreign, Guide };

/// A piece of a shape's text. Runs refer to rows of the Character, Paragraph and Tab sections by index, and hold until
/// the next run of their kind; a field shows row `index` of the TextField section.
struct TextPiece {
  enum Kind : std::uint8_t { Characters, CharacterRun, ParagraphRun, TabRun, Field };
  Kind kind = Characters;
  int index = 0;
  std::string text;  ///< Characters: UTF-8, lines end in "\n"; Field: the text last shown
};
using TextBody = std::vector<TextPiece>;

/// An image or embedded object.
struct ForeignData {
  std::string type;         ///< the file's ForeignType: "Bitmap", "EnhMetaFile", "MetaFile", "Object", "Ink"
  std::string compression;  ///< "PNG", "JPEG", "GIF", "DIB", "TIFF", or empty
  std::string extension;    ///< of the part's name: "png", "jpeg", "emf", …
  std::string bytes;
  ExtrasPtr extras;
};

struct Sheet {
  SheetId id;
  SheetKind kind = SheetKind::Shape;
  DocumentId document;
  PageId page;       ///< the page, or the master's contents, that it is on; null for document sheet and styles
  int shapeId = 0;   ///< unique on the page; a style's ID; 0 for page and document sheets
  std::string name;  ///< empty: the default name, see shapeName()
  std::string universalName;
  SheetId parent;                           ///< the group; null at the top of the page
  std::vector<SheetId> children;            ///< members in stacking order
  MasterId master;                          ///< of an instance's root; members answer their root's
  SheetId prototype;                        ///< the master's sheet from which this one inherits; null for drawn shapes
  SheetId lineStyle, fillStyle, textStyle;  ///< style sheets; null: the prototype's
  std::string data1, data2, data3;
  std::string uniqueId;
  std::shared_ptr<const TextBody> text;        ///< null: the prototype's
  std::shared_ptr<const ForeignData> foreign;  ///< null: the prototype's
  std::vector<Section> sections;               ///< sorted by number
  bool holdsComputed = false;                  ///< there may be cells with Cell::isComputed
  ExtrasPtr extras;

  const Section* find(SectionNumber number) const;
  Section* find(SectionNumber number);
  Section& section(SectionNumber number);  ///< made when missing
  const Row* find(SectionNumber number, RowKey row) const;
  /// The cell that this sheet itself holds; null when it inherits or lacks it.
  const Cell* findLocal(const CellKey& key) const;
  Cell* findLocal(const CellKey& key);
  /// The cell, made with its section and row when missing. A new Geometry or indexed row takes its place by index.
  Cell& local(const CellKey& key);
  bool isShape() const { return kind >= SheetKind::Shape; }
};

/// The sheet as a file holds it: without computed cells, and without the rows and sections that only they made.
Sheet withoutComputed(const Sheet& sheet);

}  // namespace quorvel::host
