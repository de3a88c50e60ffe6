// A small drawing for render tests, and scenes as text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/cells/cell_name.h"
#include "host/geometry/row_tags.h"
#include "host/sheet/store.h"
#include "render/build/build_scene.h"
#include "render/cells/cell_keys.h"
#include "render/svg/markup.h"

namespace quorvel::render {

struct Drawing {
  host::Store store;
  host::DocumentId document = store.addDocument("Drawing1");
  host::PageId page = store.addPage(document, "Page-1");

  Drawing() {
    set(store.page(page)->sheet, "PageWidth", 4);
    set(store.page(page)->sheet, "PageHeight", 3);
  }

  void set(host::SheetId sheet, std::string_view cell, host::Value value) {
    host::Cell& local = store.sheet(sheet)->local(*host::parseCellName(cell));
    local.value = std::move(value);
  }
  void set(host::SheetId sheet, std::string_view cell, double number) { set(sheet, cell, host::Value::number(number)); }
  void set(host::SheetId sheet, std::string_view cell, const char* text) { set(sheet, cell, host::Value::text(text)); }

  host::SheetId addShape(double pinX, double pinY, double width, double height, host::SheetId parent = {},
                         host::SheetKind kind = host::SheetKind::Shape) {
    const host::SheetId shape = store.addShape(page, parent, kind);
    set(shape, "PinX", pinX);
    set(shape, "PinY", pinY);
    set(shape, "Width", width);
    set(shape, "Height", height);
    set(shape, "LocPinX", width / 2);
    set(shape, "LocPinY", height / 2);
    return shape;
  }

  /// Geometry of the shape in vertices of its own coordinates.
  void addGeometry(host::SheetId shape, int number, const std::vector<Point>& vertices) {
    host::Section& section =
        store.sheet(shape)->section(host::SectionNumber(int(host::SectionNumber::Geometry) + number - 1));
    section.rows.emplace_back().key = host::RowKey::index(0);
    section.rows.back().type = std::uint8_t(host::RowTag::Component);
    for (std::size_t i = 0; i < vertices.size(); ++i) {
      host::Row& row = section.rows.emplace_back();
      row.key = host::RowKey::index(std::uint32_t(i + 1));
      row.type = std::uint8_t(i == 0 ? host::RowTag::MoveTo : host::RowTag::LineTo);
      row.at(columnKeys().GeometryX).value = host::Value::number(vertices[i].x);
      row.at(columnKeys().GeometryY).value = host::Value::number(vertices[i].y);
    }
  }
  host::SheetId addRectangle(double pinX, double pinY, double width, double height, host::SheetId parent = {},
                             host::SheetKind kind = host::SheetKind::Shape) {
    const host::SheetId shape = addShape(pinX, pinY, width, height, parent, kind);
    addGeometry(shape, 1, {{0, 0}, {width, 0}, {width, height}, {0, height}, {0, 0}});
    return shape;
  }
  void setText(host::SheetId shape, std::string text) {
    store.sheet(shape)->text =
        std::make_shared<host::TextBody>(host::TextBody{{host::TextPiece::Characters, 0, std::move(text)}});
  }

  Scene scene(const SceneOptions& options = {}) const { return buildScene(store, page, options); }
};

/// "M0 0L1 0Z", at most three decimals.
inline std::string textOf(const Path& path) {
  std::string text;
  std::size_t at = 0;
  const auto put = [&](char letter, int count) {
    text += letter;
    for (int i = 0; i < count; ++i, ++at) {
      if (i > 0) text += ' ';
      svg::appendNumber(text, path.points()[at].x);
      text += ' ';
      svg::appendNumber(text, path.points()[at].y);
    }
  };
  for (PathVerb verb : path.verbs()) {
    if (verb == PathVerb::Close)
      text += 'Z';
    else
      put(verb == PathVerb::MoveTo ? 'M' : verb == PathVerb::LineTo ? 'L' : 'C', verb == PathVerb::CurveTo ? 3 : 1);
  }
  return text;
}

template <class Item>
std::vector<const Item*> itemsOf(const Scene& scene) {
  std::vector<const Item*> found;
  for (const SceneItem& item : scene.items)
    if (const auto* each = std::get_if<Item>(&item)) found.push_back(each);
  return found;
}

}  // namespace quorvel::render
