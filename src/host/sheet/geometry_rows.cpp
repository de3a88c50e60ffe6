#include "host/sheet/geometry_rows.h"

#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

struct Columns {
  Column x = columnOf(SectionNumber::Geometry, "X").or_(0), y = columnOf(SectionNumber::Geometry, "Y").or_(0),
         a = columnOf(SectionNumber::Geometry, "A").or_(0), b = columnOf(SectionNumber::Geometry, "B").or_(0),
         c = columnOf(SectionNumber::Geometry, "C").or_(0), d = columnOf(SectionNumber::Geometry, "D").or_(0),
         e = columnOf(SectionNumber::Geometry, "E").or_(0);
};
const Columns& columns() {
  static const Columns known;
  return known;
}

struct Size {
  double width = 0, height = 0;
};
Size sizeOf(const Store& store, SheetId sheet) {
  static const CellKey width = objectCell("Width"), height = objectCell("Height");
  return {cellNumber(store, sheet, width), cellNumber(store, sheet, height)};
}

/// The text "NURBS(…)" or "POLYLINE(…)", which files write as the value or as the formula.
std::string listIn(const Store& store, SheetId sheet, const CellKey& cell) {
  std::string list = cellText(store, sheet, cell);
  if (list.find('(') != std::string::npos) return list;
  const FoundCell found = findCell(store, sheet, cell);
  return found.formula ? formulaText(*found.formula) : list;
}

}  // namespace

std::vector<GeometryRow> geometryRows(const Store& store, SheetId sheet, SectionNumber section) {
  std::vector<GeometryRow> rows;
  for (const RowView& view : rowsOf(store, sheet, section)) {
    if (view.key == RowKey::index(0)) continue;
    GeometryRow& row = rows.emplace_back();
    row.tag = RowTag(view.type);
    const auto number = [&](Column column) { return cellNumber(store, sheet, {section, view.key, column}); };
    row.x = number(columns().x);
    row.y = number(columns().y);
    if (row.tag == RowTag::LineTo || row.tag == RowTag::MoveTo || row.tag == RowTag::RelLineTo) continue;
    if (row.tag == RowTag::PolylineTo) {
      row.list = listIn(store, sheet, {section, view.key, columns().a});
      continue;
    }
    if (row.tag == RowTag::NurbsTo) row.list = listIn(store, sheet, {section, view.key, columns().e});
    row.a = number(columns().a);
    row.b = number(columns().b);
    row.c = number(columns().c);
    row.d = number(columns().d);
  }
  return rows;
}

GeometryPath geometryPath(const Store& store, SheetId sheet, SectionNumber section, double arcStep) {
  const Size size = sizeOf(store, sheet);
  return geometryPath(geometryRows(store, sheet, section), size.width, size.height, arcStep);
}

std::vector<Point> verticesOf(const Store& store, SheetId sheet, SectionNumber section) {
  const Size size = sizeOf(store, sheet);
  std::vector<Point> vertices;
  for (const GeometryRow& row : geometryRows(store, sheet, section))
    vertices.push_back(vertexOf(row, size.width, size.height));
  return vertices;
}

}  // namespace quorvel::host
