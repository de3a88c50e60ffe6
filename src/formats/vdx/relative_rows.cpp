#include "formats/vdx/relative_rows.h"

#include "formats/common/cell_text.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::vdx {
namespace {

using host::CellKey;
using host::Column;

using host::RowTag;

constexpr Column columnX = 0, columnY = 1, columnA = 2, columnB = 3, columnC = 4, columnD = 5;

class RowWriter {
 public:
  RowWriter(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet, host::SectionNumber section,
            const host::Row& row, bool whole)
      : writer_(writer), store_(store), sheet_(sheet), section_(section), row_(row), whole_(whole) {}

  void write(RowTag tag) {
    const char* const name = tag == RowTag::RelMoveTo            ? "MoveTo"
                             : tag == RowTag::RelLineTo          ? "LineTo"
                             : tag == RowTag::RelEllipticalArcTo ? "EllipticalArcTo"
                                                                 : "NURBSTo";
    writer_.start(name).attribute("IX", static_cast<long>(row_.key.index()));
    if (row_.deleted) writer_.attribute("Del", "1");
    scaled(columnX, "X", "Width");
    scaled(columnY, "Y", "Height");
    if (tag == RowTag::RelEllipticalArcTo) {
      scaled(columnA, "A", "Width");
      scaled(columnB, "B", "Height");
      plain(columnC, "C");
      plain(columnD, "D");
    } else if (tag == RowTag::RelCubBezTo || tag == RowTag::RelQuadBezTo) {
      curve(tag == RowTag::RelCubBezTo);
    }
    writer_.end();
  }

 private:
  double share(Column column) const { return host::cellNumber(store_, sheet_.id, {section_, row_.key, column}); }

  /// The text of the share that a cell says: its formula, or its number.
  std::string shareText(Column column) const {
    const host::FoundCell found = host::findCell(store_, sheet_.id, {section_, row_.key, column});
    std::string formula = found ? host::formulaFor(store_, sheet_.id, found) : std::string();
    if (found.formula && found.formula->formula && !found.formula->formula->constant()) return formula;
    std::string number;
    appendNumber(number, share(column));
    return number;
  }

  void scaled(Column column, std::string_view name, std::string_view side) {
    const host::Cell* const cell = row_.find(column);
    if (!cell && !whole_) return;
    std::string formula;
    if (!cell || cell->inheritsFormula) {
      formula = inheritedText;
    } else {
      const std::string text = shareText(column);
      const bool isNumber = text.find_first_not_of("0123456789.") == std::string::npos;
      formula = std::string(side) + (isNumber ? "*" + text : "*(" + text + ")");
    }
    std::string value;
    appendNumber(value, share(column) * host::cellNumber(store_, sheet_.id, host::objectCell(side)));
    writer_.start(name).attribute("F", formula).text(value).end();
  }

  void plain(Column column, std::string_view name) {
    const host::Cell* const cell = row_.find(column);
    if (!cell) return;
    thread_local WrittenCell written;
    const CellKey key{section_, row_.key, column};
    formats::writeCell(key, host::definitionOf(key), *cell, written);
    writer_.start(name);
    if (!written.unit.empty()) writer_.attribute("Unit", written.unit);
    if (written.hasFormula) writer_.attribute("F", written.formula);
    writer_.text(written.value).end();
  }

  /// One span of a spline without inner knots is the curve itself; its points may be given as shares.
  void curve(bool cubic) {
    bool held = row_.type != 0;
    for (const auto& [column, cell] : row_.cells) held = held || (column >= columnA && column <= columnD);
    if (!held && !whole_) return;
    const auto number = [&](std::string_view name, const char* text) {
      writer_.start(name);
      if (!held) writer_.attribute("F", inheritedText);
      writer_.text(text).end();
    };
    number("A", "0");
    number("B", "1");
    number("C", "0");
    number("D", "1");
    std::string formula = cubic ? "NURBS(1,3,0,0," : "NURBS(1,2,0,0,", value = formula;
    const auto point = [&](Column x, Column y) {
      formula += shareText(x) + "," + shareText(y) + ",0,1";
      appendNumber(value, share(x));
      value += ',';
      appendNumber(value, share(y));
      value += ",0,1";
    };
    point(columnA, columnB);
    if (cubic) {
      formula += ',';
      value += ',';
      point(columnC, columnD);
    }
    writer_.start("E").attribute("F", held ? formula + ")" : std::string(inheritedText)).text(value + ")").end();
  }

  XmlWriter& writer_;
  const host::Store& store_;
  const host::Sheet& sheet_;
  const host::SectionNumber section_;
  const host::Row& row_;
  const bool whole_;
};

}  // namespace

void writeRelativeRow(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet,
                      host::SectionNumber section, const host::Row& row, RowTag tag, bool whole) {
  RowWriter(writer, store, sheet, section, row, whole).write(tag);
}

}  // namespace quorvel::formats::vdx
