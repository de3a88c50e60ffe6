#include "host/edits/shape_maker.h"

#include "host/cells/cell_table.h"

namespace quorvel::host {

SheetId newShape(Engine& engine, PageId page, SheetId parent, SheetKind kind) {
  const SheetId id = engine.edit().making().addShape(page, parent, kind);
  Sheet& shape = *engine.edit().making().sheet(id);
  const Document& document = *engine.store().document(shape.document);
  shape.lineStyle = document.defaultLineStyle;
  shape.fillStyle = document.defaultFillStyle;
  shape.textStyle = document.defaultTextStyle;
  if (parent && engine.store().sheet(parent)->kind == SheetKind::Shape)
    engine.edit().setFields(parent, [](SheetFields& fields) { fields.kind = SheetKind::Group; });
  return id;
}

void ShapeMaker::length(std::string_view name, double inches, std::string_view formula) {
  set(objectCell(name), Value::number(inches, Unit::Inches), formula);
}

void ShapeMaker::angle(std::string_view name, double radians, std::string_view formula) {
  set(objectCell(name), Value::number(radians, Unit::Degrees), formula);
}

void ShapeMaker::number(std::string_view name, double value) { set(objectCell(name), Value::number(value), {}); }

void ShapeMaker::textBlock(double width, double height) {
  length("TxtPinX", width / 2, "Width*0.5");
  length("TxtPinY", height / 2, "Height*0.5");
  length("TxtWidth", width, "Width*1");
  length("TxtHeight", height, "Height*1");
  length("TxtLocPinX", width / 2, "TxtWidth*0.5");
  length("TxtLocPinY", height / 2, "TxtHeight*0.5");
  angle("TxtAngle", 0);
}

void ShapeMaker::geometryFlag(std::string_view name, bool on) {
  set({SectionNumber::Geometry, RowKey::index(0), columnOf(SectionNumber::Geometry, name).or_(0)}, Value::boolean(on),
      {});
}

void ShapeMaker::vertex(std::uint32_t row, RowTag tag, double x, std::string_view xFormula, double y,
                        std::string_view yFormula) {
  const Column columnX = columnOf(SectionNumber::Geometry, "X").or_(0);
  const Column columnY = columnOf(SectionNumber::Geometry, "Y").or_(1);
  set({SectionNumber::Geometry, RowKey::index(row), columnX}, Value::number(x, Unit::Inches), xFormula);
  set({SectionNumber::Geometry, RowKey::index(row), columnY}, Value::number(y, Unit::Inches), yFormula);
  engine_.edit().making().sheet(shape_)->find(SectionNumber::Geometry)->find(RowKey::index(row))->type = numberOf(tag);
}

void ShapeMaker::set(const CellKey& key, Value value, std::string_view formula) {
  Cell& cell = engine_.edit().making().sheet(shape_)->local(key);
  cell.value = std::move(value);
  if (!formula.empty()) cell.formula = engine_.store().formulas().get(formula);
}

}  // namespace quorvel::host
