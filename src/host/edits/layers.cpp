#include "host/edits/layers.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "host/cells/cell_table.h"
#include "host/edits/write_cell.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

CellKey layerCell(int layer, std::string_view column) {
  return {SectionNumber::Layer, RowKey::index(static_cast<std::uint32_t>(layer)),
          columnOf(SectionNumber::Layer, column).or_(0)};
}

const CellKey& membership() {
  static const CellKey key = objectCell("LayerMember");
  return key;
}

std::vector<int> parseMembership(std::string_view text) {
  std::vector<int> layers;
  for (const std::string_view piece : splitAt(text, ';')) {
    const std::string_view digits = trimmed(piece);
    int layer = 0;
    if (!digits.empty() && std::from_chars(digits.data(), digits.data() + digits.size(), layer).ec == std::errc())
      layers.push_back(layer);
  }
  return layers;
}

void writeMembership(Engine& engine, SheetId shape, std::vector<int> layers) {
  std::sort(layers.begin(), layers.end());
  std::string text;
  for (const int layer : layers) text += (text.empty() ? "" : ";") + std::to_string(layer);
  Cell cell;
  cell.value = Value::text(text);
  engine.edit().setCell({shape, membership()}, std::move(cell));
}

}  // namespace

int layerCount(const Store& store, PageId page) {
  return static_cast<int>(rowsOf(store, store.page(page)->sheet, SectionNumber::Layer).size());
}

std::string layerName(const Store& store, PageId page, int layer) {
  return cellText(store, store.page(page)->sheet, layerCell(layer, "Name"));
}

int layerNamed(const Store& store, PageId page, std::string_view name) {
  for (const RowView& row : rowsOf(store, store.page(page)->sheet, SectionNumber::Layer)) {
    const int layer = static_cast<int>(row.key.index());
    if (equalIgnoringCase(layerName(store, page, layer), name)) return layer;
  }
  return -1;
}

Outcome addLayer(Engine& engine, PageId page, std::string_view name, int& layer) {
  if (trimmed(name).empty()) return Outcome::refused("a layer needs a name");
  layer = layerNamed(engine.store(), page, name);
  if (layer >= 0) return Outcome::done();
  layer = 0;
  const SheetId sheet = engine.store().page(page)->sheet;
  for (const RowView& row : rowsOf(engine.store(), sheet, SectionNumber::Layer))
    layer = std::max(layer, static_cast<int>(row.key.index()) + 1);
  CommandScope scope(engine, engine.store().page(page)->document, "Layer");
  const auto set = [&](std::string_view column, Value value) {
    Cell cell;
    cell.value = std::move(value);
    engine.edit().setCell({sheet, layerCell(layer, column)}, std::move(cell));
  };
  set("Name", Value::text(name));
  set("NameUniv", Value::text(name));
  set("Color", Value::number(255));
  for (const char* off : {"Status", "Active", "Lock", "ColorTrans"}) set(off, Value::number(0));
  for (const char* on : {"Visible", "Print", "Snap", "Glue"}) set(on, Value::number(1));
  scope.commit();
  return Outcome::done();
}

std::vector<int> layersOf(const Store& store, SheetId shape) {
  return parseMembership(cellText(store, shape, membership()));
}

Outcome setLayerMembership(Engine& engine, SheetId shape, int layer, bool member) {
  const Sheet* sheet = engine.store().sheet(shape);
  if (!sheet || !sheet->isShape()) return Outcome::refused("only shapes can be on layers");
  CommandScope scope(engine, sheet->document, "Layer membership");
  for (const SheetId each : engine.store().subtree(shape)) {
    std::vector<int> layers = layersOf(engine.store(), each);
    const bool there = std::find(layers.begin(), layers.end(), layer) != layers.end();
    if (there == member) continue;
    if (member) {
      layers.push_back(layer);
    } else {
      std::erase(layers, layer);
    }
    writeMembership(engine, each, std::move(layers));
  }
  scope.commit();
  return Outcome::done();
}

void takeLayersOfMaster(Engine& engine, SheetId instance, MasterId masterId) {
  const PageId contents = engine.store().master(masterId)->contents;
  const PageId page = engine.store().sheet(instance)->page;
  for (const SheetId each : engine.store().subtree(instance)) {
    const Sheet& sheet = *engine.store().sheet(each);
    if (!sheet.prototype || sheet.findLocal(membership())) continue;
    std::vector<int> there, here;
    there = layersOf(engine.store(), each);
    for (const int layer : there) {
      int own = -1;
      addLayer(engine, page, layerName(engine.store(), contents, layer), own);
      if (own >= 0) here.push_back(own);
    }
    if (!there.empty() && here != there) writeMembership(engine, each, std::move(here));
  }
}

void takeLayersOfPage(Engine& engine, SheetId copy, PageId source) {
  const Store& store = engine.store();
  const PageId page = store.sheet(copy)->page;
  if (page == source) return;
  const auto ownLayer = [&](int layer) {
    const std::string name = layerName(store, source, layer);
    int own = layerNamed(store, page, name);
    if (own >= 0 || !addLayer(engine, page, name, own)) return own;
    // What the layer hid there it hides here.
    const Row* row = store.sheet(store.page(source)->sheet)->find(SectionNumber::Layer, layerCell(layer, "Name").row);
    if (!row) return own;
    for (const auto& [column, cell] : std::vector(row->cells)) {
      engine.edit().setCell({store.page(page)->sheet, {SectionNumber::Layer, layerCell(own, "Name").row, column}},
                            cell);
    }
    return own;
  };
  for (const SheetId each : store.subtree(copy)) {
    const std::vector<int> there = layersOf(store, each);
    std::vector<int> here;
    for (const int layer : there) {
      if (const int own = ownLayer(layer); own >= 0) here.push_back(own);
    }
    if (here != there) writeMembership(engine, each, std::move(here));
  }
}

}  // namespace quorvel::host
