#include "host/undo/editor.h"

#include <algorithm>

#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

/// Name and type of the row as the sheet inherits it; they stay where it inherits none.
void takeInheritedHead(const Store& store, SheetId id, SectionNumber number, Row& head) {
  bool hasName = false, hasType = false;
  for (int depth = 0; depth < 64 && !(hasName && hasType); ++depth) {
    const Sheet* sheet = store.sheet(id);
    if (!sheet) return;
    if (const Section* section = sheet->find(number)) {
      if (section->deleted) return;
      if (const Row* row = section->find(head.key)) {
        if (row->deleted) return;
        if (!hasName && row->name) head.name = row->name;
        if (!hasType && row->type) head.type = row->type;
        hasName = hasName || row->name;
        hasType = hasType || row->type;
      }
    }
    id = sheet->prototype;
  }
}

}  // namespace

void Editor::commit(Exchange exchange) {
  apply(exchange, drawing_);
  log_.add(std::move(exchange));
}

std::unique_ptr<SheetFields> Editor::fieldsOf(SheetId id) const {
  const Sheet& sheet = *store_.sheet(id);
  return std::make_unique<SheetFields>(SheetFields{
      sheet.kind, sheet.name, sheet.universalName, sheet.data1, sheet.data2, sheet.data3, sheet.uniqueId, sheet.text,
      sheet.foreign, sheet.lineStyle, sheet.fillStyle, sheet.textStyle, sheet.master, sheet.prototype});
}

std::unique_ptr<PageFields> Editor::fieldsOf(PageId id) const {
  const Page& page = *store_.page(id);
  return std::make_unique<PageFields>(PageFields{page.name, page.universalName, page.background, page.backPage});
}

/// Text pieces keep what each field showed last; for a changed field that is discarded.
void Editor::dropShown(const CellAddress& cell) {
  const Sheet& sheet = *store_.sheet(cell.sheet);
  if (cell.key.section != SectionNumber::TextField || !sheet.text) return;
  const auto shown = [&](const TextPiece& piece) {
    return piece.kind == TextPiece::Field && !piece.text.empty() &&
           RowKey::index(static_cast<std::uint32_t>(piece.index)) == cell.key.row;
  };
  if (std::none_of(sheet.text->begin(), sheet.text->end(), shown)) return;
  TextBody body = *sheet.text;
  for (TextPiece& piece : body) {
    if (shown(piece)) piece.text.clear();
  }
  setFields(cell.sheet, [&](SheetFields& fields) { fields.text = std::make_shared<const TextBody>(std::move(body)); });
}

void Editor::setCell(const CellAddress& cell, std::optional<Cell> content) {
  dropShown(cell);
  const Sheet& sheet = *store_.sheet(cell.sheet);
  if (!sheet.find(cell.key.section, cell.key.row)) {
    if (!content) return;
    Row row;
    row.key = cell.key.row;
    row.name = cell.key.row.name();
    takeInheritedHead(store_, cell.sheet, cell.key.section, row);
    row.cells.emplace_back(cell.key.column, std::move(*content));
    std::size_t place = 0;
    if (const Section* section = sheet.find(cell.key.section)) {
      const auto& rows = section->rows;
      const auto before =
          row.key.isNamed() ? rows.end() : std::find_if(rows.begin(), rows.end(), [&](const Row& other) {
            return !other.key.isNamed() && other.key.index() > row.key.index();
          });
      place = static_cast<std::size_t>(before - rows.begin());
    }
    insertRow(cell.sheet, cell.key.section, place, std::move(row));
    return;
  }
  commit(CellExchange{cell, std::move(content)});
}

void Editor::setValue(const CellAddress& cell, const Value& value) {
  const Cell* local = store_.sheet(cell.sheet)->findLocal(cell.key);
  Cell content = local ? *local : Cell{};
  if (!local) content.inheritsFormula = true;
  content.value = value;
  content.isComputed = false;
  setCell(cell, std::move(content));
}

/// A section that hides the master's comes back with each of the master's rows hidden instead.
bool Editor::revive(SheetId id, SectionNumber number) {
  const Sheet& sheet = *store_.sheet(id);
  const Section* before = sheet.find(number);
  if (!before || !before->deleted) return false;
  Section section;
  section.number = number;
  section.extras = before->extras;
  if (sheet.prototype) {
    for (const RowView& view : rowsOf(store_, sheet.prototype, number)) {
      Row& hidden = section.rows.emplace_back();
      hidden.key = view.key;
      hidden.name = view.name;
      hidden.deleted = true;
    }
  }
  replaceSection(id, number, std::move(section));
  return true;
}

void Editor::insertRow(SheetId sheet, SectionNumber section, std::size_t place, Row row) {
  if (revive(sheet, section)) {
    const auto& rows = store_.sheet(sheet)->find(section)->rows;
    const auto same = std::find_if(rows.begin(), rows.end(), [&](const Row& other) { return other.key == row.key; });
    const auto behind = row.key.isNamed() ? rows.end() : std::find_if(rows.begin(), rows.end(), [&](const Row& other) {
      return !other.key.isNamed() && other.key.index() > row.key.index();
    });
    place = static_cast<std::size_t>((same != rows.end() ? same : behind) - rows.begin());
    if (same != rows.end()) removeRow(sheet, section, place);
  }
  const RowKey key = row.key;
  commit(RowExchange{sheet, section, key, place, std::move(row)});
}

void Editor::removeRow(SheetId sheet, SectionNumber section, std::size_t place) {
  const RowKey row = store_.sheet(sheet)->find(section)->rows[place].key;
  commit(RowExchange{sheet, section, row, place, std::nullopt});
}

void Editor::setRowHead(SheetId sheet, SectionNumber section, std::size_t place, RowKey key, Atom name,
                        std::uint8_t type, std::optional<Atom> localName) {
  const Row& row = std::as_const(store_).sheet(sheet)->find(section)->rows[place];
  commit(RowHeadExchange{sheet, section, row.key, place, key, name, type, localName.value_or(row.localName)});
}

void Editor::replaceSection(SheetId sheet, SectionNumber number, std::optional<Section> content) {
  commit(SectionExchange{sheet, number, std::move(content)});
}

void Editor::addConnect(PageId page, Connect connect) {
  const std::size_t last = store_.page(page)->connects.size();
  commit(ConnectExchange{page, last, std::move(connect)});
}

void Editor::replaceConnect(PageId page, std::size_t place, Connect connect) {
  commit(ConnectExchange{page, place, std::nullopt});
  commit(ConnectExchange{page, place, std::move(connect)});
}

void Editor::shapeAdded(SheetId root) {
  for (const SheetId member : store_.subtree(root)) watchFormulas(member);
  placements_.noteArrival(*store_.sheet(root));
  log_.add(SubtreeExchange{root, 0, {}});
}
void Editor::pageAdded(PageId page) {
  watchFormulas(store_.page(page)->sheet);
  log_.add(PageExchange{page, {}});
}
void Editor::masterAdded(MasterId master) {
  const Page& contents = *store_.page(store_.master(master)->contents);
  watchFormulas(contents.sheet);
  for (const SheetId shape : contents.shapes)
    for (const SheetId sheet : store_.subtree(shape)) watchFormulas(sheet);
  log_.add(MasterExchange{master, {}});
}
void Editor::styleAdded(SheetId style) { log_.add(StyleExchange{style, {}}); }
void Editor::removeShape(SheetId root) { commit(SubtreeExchange{root, 0, {}}); }
void Editor::removePage(PageId page) { commit(PageExchange{page, {}}); }
void Editor::moveInStack(SheetId shape, std::size_t place) { moveToGroup(shape, store_.sheet(shape)->parent, place); }
void Editor::moveToGroup(SheetId shape, SheetId parent, std::size_t place) {
  commit(StackPlaceExchange{shape, parent, place});
}

}  // namespace quorvel::host
