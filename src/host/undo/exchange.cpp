#include "host/undo/exchange.h"

#include <algorithm>

namespace quorvel::host {
namespace {

struct Apply : Exchanged {
  void watch(const CellAddress& address) const {
    const Cell* cell = store.sheet(address.sheet)->findLocal(address.key);
    if (cell && cell->formula && !cell->inheritsFormula) graph.addFormula(address, *cell->formula);
  }
  void watchRow(SheetId sheet, SectionNumber section, const Row& row) const {
    for (const auto& entry : row.cells) watch({sheet, {section, row.key, entry.first}});
  }

  /// What is restored with a page, a master or a group is read and counted again.
  template <class Put>
  void restore(const std::vector<std::unique_ptr<Sheet>>& sheets, Put put) const {
    std::vector<SheetId> back;
    back.reserve(sheets.size());
    for (const auto& sheet : sheets) back.push_back(sheet->id);
    put();
    for (const SheetId sheet : back) graph.addSheet(sheet);
  }

  /// The row of the key, looked for at its place first.
  static Row* rowAt(Section& section, RowKey key, std::size_t place) {
    if (place < section.rows.size() && section.rows[place].key == key) return &section.rows[place];
    return section.find(key);
  }

  void operator()(CellExchange& exchange) const {
    Sheet* sheet = store.sheet(exchange.cell.sheet);
    if (!sheet) return;
    const CellKey& key = exchange.cell.key;
    placements.noteCell(store, *sheet, key);
    Cell* cell = sheet->findLocal(key);
    if (exchange.held && cell) {
      const bool sameFormula = cell->formula == exchange.held->formula;
      std::swap(*cell, *exchange.held);
      if (!sameFormula) watch(exchange.cell);
    } else if (exchange.held) {
      sheet->local(key) = std::move(*exchange.held);
      exchange.held.reset();
      watch(exchange.cell);
    } else if (cell) {
      exchange.held = std::move(*cell);
      Row* row = sheet->find(key.section)->find(key.row);
      std::erase_if(row->cells, [&](const auto& entry) { return entry.first == key.column; });
    }
  }

  void operator()(RowExchange& exchange) const {
    Sheet* sheet = store.sheet(exchange.sheet);
    if (!sheet) return;
    if (exchange.held) {
      for (const auto& entry : exchange.held->cells)
        placements.noteCell(store, *sheet, {exchange.section, exchange.held->key, entry.first});
      placements.noteSection(*sheet, exchange.section);
      auto& rows = sheet->section(exchange.section).rows;
      const auto place = static_cast<std::ptrdiff_t>(std::min(exchange.place, rows.size()));
      const auto row = rows.insert(rows.begin() + place, std::move(*exchange.held));
      exchange.held.reset();
      watchRow(exchange.sheet, exchange.section, *row);
      return;
    }
    Section* section = sheet->find(exchange.section);
    Row* found = section ? rowAt(*section, exchange.row, exchange.place) : nullptr;
    if (!found) return;
    const auto row = section->rows.begin() + (found - section->rows.data());
    exchange.place = static_cast<std::size_t>(found - section->rows.data());
    for (const auto& entry : row->cells) placements.noteCell(store, *sheet, {exchange.section, row->key, entry.first});
    placements.noteSection(*sheet, exchange.section);
    exchange.held = std::move(*row);
    section->rows.erase(row);
    if (section->rows.empty() && !section->deleted && !section->extras) {
      std::erase_if(sheet->sections, [&](const Section& other) { return other.number == exchange.section; });
    }
  }

  void operator()(RowHeadExchange& exchange) const {
    Sheet* sheet = store.sheet(exchange.sheet);
    Section* section = sheet ? sheet->find(exchange.section) : nullptr;
    Row* found = section ? rowAt(*section, exchange.row, exchange.place) : nullptr;
    if (!found) return;
    placements.noteSection(*sheet, exchange.section);
    Row& row = *found;
    if (row.key != exchange.key && (row.key.isNamed() || exchange.key.isNamed()))
      renames.note(exchange.sheet, exchange.section, row.key, exchange.key);
    exchange.row = exchange.key;
    std::swap(row.key, exchange.key);
    std::swap(row.name, exchange.name);
    std::swap(row.type, exchange.type);
    std::swap(row.localName, exchange.localName);
    watchRow(exchange.sheet, exchange.section, row);
  }

  void operator()(SectionExchange& exchange) const {
    Sheet* sheet = store.sheet(exchange.sheet);
    if (!sheet) return;
    placements.noteSection(*sheet, exchange.number);
    std::optional<Section> out;
    if (Section* section = sheet->find(exchange.number)) {
      out = std::move(*section);
      std::erase_if(sheet->sections, [&](const Section& other) { return other.number == exchange.number; });
    }
    if (exchange.held) {
      Section& section = sheet->section(exchange.number);
      section = std::move(*exchange.held);
      for (const Row& row : section.rows) watchRow(exchange.sheet, exchange.number, row);
    }
    exchange.held = std::move(out);
  }

  void operator()(SheetFieldsExchange& exchange) const {
    Sheet* sheet = store.sheet(exchange.sheet);
    if (!sheet) return;
    SheetFields& held = *exchange.held;
    std::swap(sheet->kind, held.kind);
    std::swap(sheet->name, held.name);
    std::swap(sheet->universalName, held.universalName);
    std::swap(sheet->data1, held.data1);
    std::swap(sheet->data2, held.data2);
    std::swap(sheet->data3, held.data3);
    std::swap(sheet->uniqueId, held.uniqueId);
    std::swap(sheet->text, held.text);
    std::swap(sheet->foreign, held.foreign);
    std::swap(sheet->lineStyle, held.lineStyle);
    std::swap(sheet->fillStyle, held.fillStyle);
    std::swap(sheet->textStyle, held.textStyle);
    std::swap(sheet->master, held.master);
    std::swap(sheet->prototype, held.prototype);
  }

  void operator()(SubtreeExchange& exchange) const {
    if (!exchange.held.empty()) {
      const Sheet& shape = *exchange.held.front();
      if (!store.page(shape.page) || (shape.parent && !store.sheet(shape.parent))) return;
      restore(exchange.held, [&] { store.putSubtree(std::move(exchange.held), exchange.place); });
      exchange.held.clear();
      if (const Sheet* root = store.sheet(exchange.root)) placements.noteArrival(*root);
      return;
    }
    const Sheet* root = store.sheet(exchange.root);
    if (!root) return;
    placements.noteLeaving(store, *root);
    const auto& order = store.siblings(*root);
    exchange.place = static_cast<std::size_t>(std::find(order.begin(), order.end(), exchange.root) - order.begin());
    exchange.held = store.takeSubtree(exchange.root);
  }

  void operator()(StackPlaceExchange& exchange) const {
    const Sheet* shape = store.sheet(exchange.shape);
    if (!shape || (exchange.parent && !store.sheet(exchange.parent))) return;
    const SheetId before = shape->parent;
    if (before != exchange.parent) placements.noteRegrouping(store, *shape);
    exchange.place = store.stand(exchange.shape, exchange.parent, exchange.place);
    if (before != exchange.parent) graph.followNewGroups(exchange.shape);
    exchange.parent = before;
  }

  void operator()(PageExchange& exchange) const {
    if (exchange.held.page) {
      if (!store.document(exchange.held.page->document)) return;
      restore(exchange.held.sheets, [&] { store.putPage(std::move(exchange.held)); });
      exchange.held = {};
    } else if (store.page(exchange.page)) {
      exchange.held = store.takePage(exchange.page);
    }
  }

  void operator()(MasterExchange& exchange) const {
    if (exchange.held.master) {
      if (!store.document(exchange.held.master->document)) return;
      restore(exchange.held.sheets, [&] { store.putMaster(std::move(exchange.held)); });
      exchange.held = {};
    } else if (store.master(exchange.master)) {
      exchange.held = store.takeMaster(exchange.master);
    }
  }

  void operator()(StyleExchange& exchange) const {
    if (exchange.held.sheet) {
      if (!store.document(exchange.held.sheet->document)) return;
      store.putStyle(std::move(exchange.held));
      exchange.held = {};
      graph.addSheet(exchange.style);
    } else if (store.sheet(exchange.style)) {
      exchange.held = store.takeStyle(exchange.style);
    }
  }

  void operator()(PageFieldsExchange& exchange) const {
    Page* page = store.page(exchange.page);
    if (!page) return;
    PageFields& held = *exchange.held;
    std::swap(page->name, held.name);
    std::swap(page->universalName, held.universalName);
    std::swap(page->background, held.background);
    std::swap(page->backPage, held.backPage);
  }

  void operator()(ConnectExchange& exchange) const {
    Page* page = store.page(exchange.page);
    if (!page) return;
    auto& connects = page->connects;
    if (exchange.held) {
      exchange.place = std::min(exchange.place, connects.size());
      connects.insert(connects.begin() + static_cast<std::ptrdiff_t>(exchange.place), std::move(*exchange.held));
      exchange.held.reset();
    } else if (exchange.place < connects.size()) {
      const auto connect = connects.begin() + static_cast<std::ptrdiff_t>(exchange.place);
      exchange.held = std::move(*connect);
      connects.erase(connect);
    }
  }
};

/// Finds the document by whatever the entry names or holds.
struct FindDocument {
  const Store& store;

  DocumentId ofSheet(SheetId id) const {
    const Sheet* sheet = store.sheet(id);
    return sheet ? sheet->document : DocumentId{};
  }
  DocumentId ofPage(PageId id) const {
    const Page* page = store.page(id);
    return page ? page->document : DocumentId{};
  }
  DocumentId operator()(const CellExchange& exchange) const { return ofSheet(exchange.cell.sheet); }
  DocumentId operator()(const RowExchange& exchange) const { return ofSheet(exchange.sheet); }
  DocumentId operator()(const RowHeadExchange& exchange) const { return ofSheet(exchange.sheet); }
  DocumentId operator()(const SectionExchange& exchange) const { return ofSheet(exchange.sheet); }
  DocumentId operator()(const SheetFieldsExchange& exchange) const { return ofSheet(exchange.sheet); }
  DocumentId operator()(const SubtreeExchange& exchange) const {
    return exchange.held.empty() ? ofSheet(exchange.root) : exchange.held.front()->document;
  }
  DocumentId operator()(const StackPlaceExchange& exchange) const { return ofSheet(exchange.shape); }
  DocumentId operator()(const PageExchange& exchange) const {
    return exchange.held.page ? exchange.held.page->document : ofPage(exchange.page);
  }
  DocumentId operator()(const MasterExchange& exchange) const {
    if (exchange.held.master) return exchange.held.master->document;
    const Master* master = store.master(exchange.master);
    return master ? master->document : DocumentId{};
  }
  DocumentId operator()(const StyleExchange& exchange) const {
    return exchange.held.sheet ? exchange.held.sheet->document : ofSheet(exchange.style);
  }
  DocumentId operator()(const PageFieldsExchange& exchange) const { return ofPage(exchange.page); }
  DocumentId operator()(const ConnectExchange& exchange) const { return ofPage(exchange.page); }
};

/// Bytes behind the objects themselves, which their holders count.
struct HeldBytes {
  static std::size_t of(const std::string& text) { return text.capacity() < sizeof(text) ? 0 : text.capacity() + 1; }
  template <class Shared, class Count>
  static std::size_t shared(const std::shared_ptr<Shared>& held, Count count) {
    return held ? count(*held) / static_cast<std::size_t>(held.use_count()) : 0;
  }
  static std::size_t of(const Cell& cell) {
    // Formulas are kept by the pool of all documents, whether undo holds them or not.
    return cell.value.isText() ? cell.value.asText().size() : 0;
  }
  static std::size_t of(const Row& row) {
    std::size_t bytes = row.cells.capacity() * sizeof(row.cells.front());
    for (const auto& [column, cell] : row.cells) bytes += of(cell);
    return bytes;
  }
  static std::size_t of(const Section& section) {
    std::size_t bytes = section.rows.capacity() * sizeof(Row);
    for (const Row& row : section.rows) bytes += of(row);
    return bytes;
  }
  static std::size_t of(const TextBody& body) {
    std::size_t bytes = sizeof(body) + body.capacity() * sizeof(TextPiece);
    for (const TextPiece& piece : body) bytes += of(piece.text);
    return bytes;
  }
  static std::size_t of(const ForeignData& data) { return sizeof(data) + of(data.bytes); }
  /// What a sheet and its fields that are out of it have in common.
  template <class Fields>
  static std::size_t ofFields(const Fields& fields) {
    return of(fields.name) + of(fields.universalName) + of(fields.data1) + of(fields.data2) + of(fields.data3) +
           shared(fields.text, [](const TextBody& body) { return of(body); }) +
           shared(fields.foreign, [](const ForeignData& data) { return of(data); });
  }
  static std::size_t of(const Sheet& sheet) {
    std::size_t bytes = ofFields(sheet) + of(sheet.uniqueId) + sheet.children.capacity() * sizeof(SheetId) +
                        sheet.sections.capacity() * sizeof(Section);
    for (const Section& section : sheet.sections) bytes += of(section);
    return bytes;
  }
  static std::size_t of(const std::vector<std::unique_ptr<Sheet>>& sheets) {
    std::size_t bytes = sheets.capacity() * sizeof(sheets.front());
    for (const auto& sheet : sheets) bytes += sizeof(Sheet) + of(*sheet);
    return bytes;
  }
  static std::size_t of(const Connect& connect) { return of(connect.fromCell) + of(connect.toCell); }
  static std::size_t of(const Page& page) {
    constexpr std::size_t nodeOfMap = 4 * sizeof(void*);
    std::size_t bytes = of(page.name) + of(page.universalName) + page.shapes.capacity() * sizeof(SheetId) +
                        page.byShapeId.size() * nodeOfMap + page.connects.capacity() * sizeof(Connect);
    for (const Connect& connect : page.connects) bytes += of(connect);
    return bytes;
  }

  std::size_t operator()(const CellExchange& exchange) const { return exchange.held ? of(*exchange.held) : 0; }
  std::size_t operator()(const RowExchange& exchange) const { return exchange.held ? of(*exchange.held) : 0; }
  std::size_t operator()(const RowHeadExchange&) const { return 0; }
  std::size_t operator()(const SectionExchange& exchange) const { return exchange.held ? of(*exchange.held) : 0; }
  std::size_t operator()(const SheetFieldsExchange& exchange) const {
    return sizeof(SheetFields) + ofFields(*exchange.held);
  }
  std::size_t operator()(const SubtreeExchange& exchange) const { return of(exchange.held); }
  std::size_t operator()(const StackPlaceExchange&) const { return 0; }
  std::size_t operator()(const PageExchange& exchange) const {
    return of(exchange.held.sheets) + (exchange.held.page ? sizeof(Page) + of(*exchange.held.page) : 0);
  }
  std::size_t operator()(const MasterExchange& exchange) const {
    if (!exchange.held.master) return 0;
    return sizeof(Master) + sizeof(Page) + of(*exchange.held.contents) + of(exchange.held.sheets);
  }
  std::size_t operator()(const StyleExchange& exchange) const {
    return exchange.held.sheet ? sizeof(Sheet) + of(*exchange.held.sheet) : 0;
  }
  std::size_t operator()(const PageFieldsExchange& exchange) const {
    return sizeof(PageFields) + of(exchange.held->name) + of(exchange.held->universalName);
  }
  std::size_t operator()(const ConnectExchange& exchange) const { return exchange.held ? of(*exchange.held) : 0; }
};

}  // namespace

void apply(Exchange& exchange, const Exchanged& drawing) { std::visit(Apply{drawing}, exchange); }

DocumentId documentOf(const Exchange& exchange, const Store& store) {
  return std::visit(FindDocument{store}, exchange);
}

std::size_t sizeOf(const Exchange& exchange) { return sizeof(exchange) + std::visit(HeldBytes{}, exchange); }

}  // namespace quorvel::host
