// Members of cells, sections and rows.
#include <cmath>
#include <limits>

#include "host/automation/in_memory_host.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"
#include "host/commands/text_fields.h"
#include "host/edits/write_cell.h"
#include "host/sheet/inheritance.h"

namespace quorvel::host {
namespace {

std::string rowNameOf(const Store& store, const CellAddress& cell, NameKind kind = NameKind::Universal) {
  if (!cell.key.row.isNamed()) return {};
  const Maybe<RowView> row = rowWithKey(store, cell.sheet, cell.key.section, cell.key.row);
  if (!row) return {};
  return std::string(spelling(kind == NameKind::Local && row->localName ? row->localName : row->name));
}

}  // namespace

Maybe<Variant> InMemoryHost::getSectionOrRow(const ObjectRef& object, Member member, Arguments arguments) {
  const SheetId sheet{object.id};
  if (object.kind == ObjectKind::Section) {
    const auto section = static_cast<SectionNumber>(object.part);
    if (member == Member::Section_Count)
      return Variant(static_cast<std::int64_t>(rowsOf(engine_.store(), sheet, section).size()));
    const Maybe<RowView> row = rowAt(engine_.store(), sheet, section, integerAt(arguments, 0).or_(-1));
    if (!row) return refuse("the index lies outside 0 to Count - 1");
    return Variant(engine_.refToRow(sheet, section, row->key));
  }
  const auto section = static_cast<SectionNumber>(object.part >> 32);
  const RowKey row = RowKey::fromPacked(static_cast<std::uint32_t>(object.part));
  if (!rowExists(engine_.store(), sheet, section, row, false)) return refuse("the row is deleted");
  if (member == Member::Row_Name || member == Member::Row_NameU)
    return Variant(rowNameOf(engine_.store(), {sheet, {section, row, 0}},
                             member == Member::Row_Name ? NameKind::Local : NameKind::Universal));
  const int column = integerAt(arguments, 0).or_(-1);
  const CellKey key{section, row, static_cast<Column>(column)};
  if (column < 0 || !cellExists(engine_.store(), sheet, key, false))
    return refuseName("the section has no such column");
  return Variant(engine_.refTo(CellAddress{sheet, key}));
}

bool InMemoryHost::putRow(const ObjectRef& object, Member member, const Argument& value) {
  const Maybe<std::string_view> name = textOfArgument(value);
  if ((member != Member::Row_Name && member != Member::Row_NameU) || !name) {
    refuse("the property can't be put so");
    return false;
  }
  return settle(renameRow(engine_, SheetId{object.id}, static_cast<SectionNumber>(object.part >> 32),
                          RowKey::fromPacked(static_cast<std::uint32_t>(object.part)), *name,
                          member == Member::Row_Name ? NameKind::Local : NameKind::Universal));
}

Maybe<Variant> InMemoryHost::getCell(const CellAddress& cell, Member member, Arguments arguments) {
  const Store& store = engine_.store();
  const bool exists = cellExists(store, cell.sheet, cell.key, false);
  // The first field of an empty text can be written and has a place, though there is nothing to read yet.
  if (!exists && !isFirstField(engine_, cell)) return refuse("the cell is deleted");
  switch (member) {
    case Member::Cell_Shape:
      return Variant(refTo(ObjectKind::Shape, cell.sheet.value));
    case Member::Cell_Section:
      return Variant(static_cast<std::int64_t>(cell.key.section));
    case Member::Cell_Column:
      return Variant(std::int64_t{cell.key.column});
    case Member::Cell_Name:
      return Variant(cellName(cell.key, rowNameOf(store, cell)));
    default:
      break;
  }
  if (!exists) return refuseName("the cell does not exist");
  switch (member) {
    case Member::Cell_Row:
      if (cell.key.section == SectionNumber::Object) return Variant(std::int64_t{cell.key.row.index()});
      return Variant(std::int64_t{placeOf(store, cell.sheet, cell.key.section, cell.key.row)});
    case Member::Cell_Formula:
    case Member::Cell_FormulaU: {
      const FoundCell found = findCell(store, cell.sheet, cell.key);
      Cell unheld;
      if (!found) unheld.value = cellValue(store, cell.sheet, cell.key);
      const std::string universal = found ? formulaFor(store, cell.sheet, found) : formulaText(unheld);
      return Variant(member == Member::Cell_Formula ? toLocalSyntax(universal, store.locale()) : universal);
    }
    case Member::Cell_ResultStr: {
      return Variant(cellValue(store, cell.sheet, cell.key).asText(integerAt(arguments, 0).or_(0)));
    }
    case Member::Cell_ResultIU:
    case Member::Cell_Result:
    case Member::Cell_ResultInt: {
      const int units = member == Member::Cell_ResultIU ? 0 : integerAt(arguments, 0).or_(0);
      const Maybe<double> number = cellValue(store, cell.sheet, cell.key).asNumberIn(units);
      if (!number) return refuse("the cell holds no quantity");
      if (member != Member::Cell_ResultInt) return Variant(*number);
      const double whole = integerAt(arguments, 1).or_(0) != 0 ? std::round(*number) : std::trunc(*number);
      if (std::fabs(whole) > std::numeric_limits<int>::max()) return refuse("the number is too large");
      return Variant(static_cast<std::int64_t>(whole));
    }
    default:
      return refuse("not a property");
  }
}

bool InMemoryHost::putCell(const CellAddress& cell, Member member, Arguments indices, const Argument& value) {
  switch (member) {
    case Member::Cell_Formula:
    case Member::Cell_FormulaU:
    case Member::Cell_FormulaForce:
    case Member::Cell_FormulaForceU: {
      const Maybe<std::string_view> formula = textOfArgument(value);
      if (!formula) break;
      const bool force = member == Member::Cell_FormulaForce || member == Member::Cell_FormulaForceU;
      const bool local = member == Member::Cell_Formula || member == Member::Cell_FormulaForce;
      const FormulaLocale& locale = engine_.store().locale();
      const std::string universal = local ? toUniversalSyntax(*formula, locale) : std::string(*formula);
      if (isFirstField(engine_, cell)) return settle(writeFirstField(engine_, cell.sheet, universal));
      return settle(writeFormula(engine_, cell, universal, force));
    }
    case Member::Cell_Result:
    case Member::Cell_ResultForce:
    case Member::Cell_ResultIU: {
      const Maybe<double> number = numberOf(value);
      if (!number || !std::isfinite(*number)) break;
      const int units = member == Member::Cell_ResultIU ? 0 : integerAt(indices, 0).or_(0);
      return settle(writeResult(engine_, cell, units, *number, member == Member::Cell_ResultForce));
    }
    default:
      break;
  }
  refuse("the property can't be put so");
  return false;
}

}  // namespace quorvel::host
