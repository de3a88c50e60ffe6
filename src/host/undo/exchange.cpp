#include "host/undo/exchange.h"

#include <algorithm>

namespace quorvel::host {
namespace {

struct Apply {
  Store& store;
  DependencyGraph& graph;
  PlacementJournal& placements;

  void watch(const CellAddress& address) const {
    const Cell* cell = store.sheet(address.sheet)->findLocal(address.key);
    if (cell && cell->formula && !cell->inheritsFormula) graph.addFormula(address, *cell->formula);
  }
  void watchRow(SheetId sheet, SectionNumber section, const Row& row) const {
    for (const auto& entry : row.cells) watch({sheet, {section, row.key, entry.first}});
  }

  /// What a page, a master or a group brought back is read and counted again.
  template <class Put>
  void bringBack(const std::vector<std::unique_ptr<Sheet>>& sheets, Put put) const {
    std::vector<SheetId> back;
    back.reserve(sheets.size());
    for (const auto& sheet : sheets) back.push_back(sheet->id);
    put();
    for (const SheetId sheet : back) graph.addSheet(sheet);
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
    if (!section || exchange.place >= section->rows.size()) return;
    const auto row = section->rows.begin() + static_cast<std::ptrdiff_t>(exchange.place);
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
    if (!section || exchange.place >= section->rows.size()) return;
    placements.noteSection(*sheet, exchange.section);
    Row& row = section->rows[exchange.place];
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
      bringBack(exchange.held, [&] { store.putSubtree(std::move(exchange.held), exchange.place); });
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

  void operator()(StandingExchange& exchange) const {
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
      bringBack(exchange.held.sheets, [&] { store.putPage(std::move(exchange.held)); });
      exchange.held = {};
    } else if (store.page(exchange.page)) {
      exchange.held = store.takePage(exchange.page);
    }
  }

  void operator()(MasterExchange& exchange) const {
    if (exchange.held.master) {
      bringBack(exchange.held.sheets, [&] { store.putMaster(std::move(exchange.held)); });
      exchange.held = {};
    } else if (store.master(exchange.master)) {
      exchange.held = store.takeMaster(exchange.master);
    }
  }

  void operator()(StyleExchange& exchange) const {
    if (exchange.held.sheet) {
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

}  // namespace

void apply(Exchange& exchange, Store& store, DependencyGraph& graph, PlacementJournal& placements) {
  std::visit(Apply{store, graph, placements}, exchange);
}

}  // namespace quorvel::host
