// Changes as exchanges: an entry holds what the document does not, and applying it swaps the two, so that redo is the
// same act as undo. Entries name things by number.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "host/connectors/placement_journal.h"
#include "host/recalc/cell_address.h"
#include "host/recalc/dependency_graph.h"
#include "host/sheet/store.h"
#include "host/undo/row_renames.h"

namespace quorvel::host {

/// A cell of a row that the sheet holds; nothing: the sheet does not hold the cell.
struct CellExchange {
  CellAddress cell;
  std::optional<Cell> held;
};

/// A row of a section; nothing: the section has no row of this key. A section is made with its first row and deleted
/// with its last.
struct RowExchange {
  SheetId sheet;
  SectionNumber section = SectionNumber::None;
  RowKey row;
  std::size_t place = 0;  ///< where the row belongs; upkeep, which is no step, may have moved it
  std::optional<Row> held;
};

/// Key, names and type of a row: renaming and retyping.
struct RowHeadExchange {
  SheetId sheet;
  SectionNumber section = SectionNumber::None;
  RowKey row;  ///< the key that the row has now
  std::size_t place = 0;
  RowKey key;  ///< the one that it gets
  Atom name;
  std::uint8_t type = 0;
  Atom localName;
};

struct SectionExchange {
  SheetId sheet;
  SectionNumber number = SectionNumber::None;
  std::optional<Section> held;
};

/// The parts of a sheet that are no cells.
struct SheetFields {
  SheetKind kind = SheetKind::Shape;
  std::string name, universalName, data1, data2, data3, uniqueId;
  std::shared_ptr<const TextBody> text;
  std::shared_ptr<const ForeignData> foreign;
  SheetId lineStyle, fillStyle, textStyle;
  MasterId master;
  SheetId prototype;
};
struct SheetFieldsExchange {
  SheetId sheet;
  std::unique_ptr<SheetFields> held;
};

/// A shape with its members, out of the drawing while held.
struct SubtreeExchange {
  SheetId root;
  std::size_t place = 0;
  std::vector<std::unique_ptr<Sheet>> held;
};

/// The place of a shape: in which group (null: at the top of the page), and at which place of the stack there.
struct StackPlaceExchange {
  SheetId shape;
  SheetId parent;
  std::size_t place = 0;
};

struct PageExchange {
  PageId page;
  DetachedPage held;
};

/// A master or a style that a drop added.
struct MasterExchange {
  MasterId master;
  DetachedMaster held;
};
struct StyleExchange {
  SheetId style;
  DetachedStyle held;
};

struct PageFields {
  std::string name, universalName;
  bool background = false;
  PageId backPage;
};
struct PageFieldsExchange {
  PageId page;
  std::unique_ptr<PageFields> held;
};

/// A glued end at a place of the page's list; nothing: none there. One at a time, because a map has as many as links.
struct ConnectExchange {
  PageId page;
  std::size_t place = 0;
  std::optional<Connect> held;
};

using Exchange =
    std::variant<CellExchange, RowExchange, RowHeadExchange, SectionExchange, SheetFieldsExchange, SubtreeExchange,
                 StackPlaceExchange, PageExchange, MasterExchange, StyleExchange, PageFieldsExchange, ConnectExchange>;

/// What an exchange changes: the drawing and what follows it.
struct Exchanged {
  Store& store;
  DependencyGraph& graph;
  PlacementJournal& placements;
  RowRenames& renames;
};

/// Swaps, and notes what moved; an entry whose object, page, group or document was deleted does nothing.
void apply(Exchange& exchange, const Exchanged& drawing);

/// The document that the exchange changes; null when its object was deleted.
DocumentId documentOf(const Exchange& exchange, const Store& store);

/// Bytes that the entry takes with what it holds. What it shares with others, such as an image with its copies, is
/// counted in equal parts.
std::size_t sizeOf(const Exchange& exchange);

}  // namespace quorvel::host
