#include "formats/common/sheet_reader.h"

#include <algorithm>

#include "formats/common/cell_text.h"
#include "formats/common/row_types.h"

namespace quorvel::formats {
namespace {

using host::CellKey;
using host::Column;
using host::Row;
using host::RowKey;
using host::Section;
using host::SectionNumber;

/// A value that is the element's own text. Blanks around other elements or next to a formula are the file's layout.
bool hasContentValue(pugi::xml_node cell) {
  if (cell.attribute("V") || !cell.first_child()) return false;
  const bool blanksCount = !cell.attribute("F") && !childNamed(cell, "RefBy");
  const std::string text = innerText(cell);
  return blanksCount ? !text.empty() : text.find_first_not_of(" \t\r\n") != std::string::npos;
}

/// Reads the cell into `cell`. What our writing of it would not give back is carried with its row.
void readCellElement(ReadState& state, pugi::xml_node node, const CellKey& key, host::Cell& cell,
                     host::ExtrasPtr& rowExtras) {
  CellAttributes text;
  AttributeList unknown;
  std::string_view name;
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view which = attribute.name();
    const std::string_view value = attribute.value();
    if (which == "N") {
      name = value;
    } else if (which == "V") {
      text.hasValue = true;
      text.value = value;
    } else if (which == "U") {
      text.hasUnit = true;
      text.unit = value;
    } else if (which == "F") {
      text.hasFormula = true;
      text.formula = value;
    } else if (which == "E") {
      text.hasError = true;
      text.error = value;
    } else {
      keepAttribute(node, attribute, unknown);
    }
  }
  std::string content;
  const bool valueIsContent = hasContentValue(node);
  if (valueIsContent) {
    content = innerText(node);
    text.hasValue = true;
    text.value = content;
  }
  const host::CellDefinition* definition = host::definitionOf(key);
  bool formulaIsBroken = false;
  cell = readCell(key, definition, text, state.store.formulas(), formulaIsBroken);
  if (lacksValue(text, cell)) state.unvalued.push_back({state.sheet, key});

  thread_local WrittenCell written;
  writeCell(key, definition, cell, written);
  const bool otherName = host::columnName(key) != name;
  CarriedRow* row = rowExtras ? &extrasOf<CarriedRow>(rowExtras) : nullptr;
  if (row) std::erase_if(row->cells, [&](const CarriedCell& one) { return one.column == key.column; });
  if (saysTheSame(written, text) && !otherName && unknown.empty() && !node.first_child()) return;

  CarriedCell carry = carriedCell(key.column, text, formulaIsBroken);
  if (otherName) carry.name = name;
  carry.valueIsContent = valueIsContent;
  carry.attributes = std::move(unknown);
  for (const pugi::xml_node child : node) {
    // Text is the value, here or in the attribute; said twice it would differ after the next change.
    if (child.type() == pugi::node_element) carry.contents += rawXml(child);
  }
  extrasOf<CarriedRow>(rowExtras).cells.push_back(std::move(carry));
}

/// "Inherited" without a value says nothing that is not so anyway; taken in, it would hide the master's value.
bool saysNothing(pugi::xml_node cell) {
  return !cell.attribute("V") && std::string_view(cell.attribute("F").value()) == "Inh" && !hasContentValue(cell);
}

void readRowCells(ReadState& state, pugi::xml_node node, SectionNumber section, Row& row) {
  const bool inShares = host::isGeometry(section) && isRelative(host::RowTag(row.type));
  row.cells.reserve(row.cells.size() + static_cast<std::size_t>(std::distance(node.begin(), node.end())));
  for (const pugi::xml_node child : node) {
    if (child.type() != pugi::node_element) continue;
    const char* const name = child.attribute("N").value();
    if (localName(child) != "Cell" || !*name || saysNothing(child)) {
      extrasOf<CarriedRow>(row.extras).contents += rawXml(child);
      continue;
    }
    const Column column = host::columnOrNew(section, name);
    host::Cell& cell = row.at(column);
    readCellElement(state, child, {section, row.key, column}, cell, row.extras);
    if (inShares && cell.value.unit() == host::Unit::Drawing) cell.value = host::Value::number(cell.value.internal());
  }
}

/// Finds rows of a section while it is read; long sections get an index, so that reading stays in step with their size.
class RowFinder {
 public:
  explicit RowFinder(Section& section) : section_(section) {}

  static constexpr std::size_t indexedFrom = 48;

  Row* find(RowKey key) {
    const std::size_t count = section_.rows.size();
    if (count < indexedFrom) return section_.find(key);
    for (; indexed_ < count; ++indexed_) places_.try_emplace(section_.rows[indexed_].key.packed(), indexed_);
    const auto found = places_.find(key.packed());
    return found != places_.end() ? &section_.rows[found->second] : nullptr;
  }

  Row& rowOf(RowKey key) {
    if (Row* const found = find(key)) return *found;
    section_.rows.emplace_back();
    section_.rows.back().key = key;
    return section_.rows.back();
  }

 private:
  Section& section_;
  std::unordered_map<std::uint32_t, std::size_t> places_;
  std::size_t indexed_ = 0;
};

void readRow(ReadState& state, pugi::xml_node node, Section& section, RowFinder& finder) {
  const bool geometry = host::isGeometry(section.number);
  const std::string_view name = geometry ? std::string_view() : node.attribute("N").value();
  int index = 0;
  if (const pugi::xml_attribute given = node.attribute("IX"); name.empty() && given) {
    index = wholeNumber(given.value(), -1);
  } else if (name.empty()) {
    // A row without name or index is numbered by its place; vertices count from 1.
    index = static_cast<int>(section.rows.size()) + (geometry && !finder.find(RowKey::index(0)) ? 1 : 0);
  }
  if (index < (geometry ? 1 : 0) || index > largestRowIndex) {
    extrasOf<CarriedSection>(section.extras).contents += rawXml(node);
    return;
  }
  const host::Atom atom = name.empty() ? host::Atom{} : host::intern(name);
  Row& row = finder.rowOf(name.empty() ? RowKey::index(static_cast<std::uint32_t>(index)) : RowKey::named(atom));
  row.name = atom;
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view which = attribute.name();
    if ((which == "N" && !geometry) || (which == "IX" && name.empty())) continue;
    if (which == "Del") {
      row.deleted = truth(attribute.value());
    } else if (which == "LocalName" && !name.empty() && attribute.value() != name && *attribute.value()) {
      row.localName = host::intern(attribute.value());
    } else if (which == "T" && geometry && rowTagOf(attribute.value()) != 0) {
      row.type = rowTagOf(attribute.value());
    } else {
      keepAttribute(node, attribute, extrasOf<CarriedRow>(row.extras).attributes);
    }
  }
  readRowCells(state, node, section.number, row);
}

void readSection(ReadState& state, host::Sheet& sheet, pugi::xml_node node) {
  const std::string_view name = node.attribute("N").value();
  SectionNumber number = host::sectionOfFileName(name);
  if (number == SectionNumber::Geometry) {
    const int index = wholeNumber(node.attribute("IX").value(), 0);
    number = index < 0 || index > lastGeometryIndex
                 ? SectionNumber::None
                 : static_cast<SectionNumber>(static_cast<int>(SectionNumber::Geometry) + index);
  }
  const Section* const before = sheet.find(number);
  // A long section that comes in pieces would be searched from its start for each.
  const bool isPieceOfLong = before && before->rows.size() >= RowFinder::indexedFrom;
  if (number == SectionNumber::None || number == SectionNumber::Object || isPieceOfLong) {
    carriedOf(sheet).contents += rawXml(node);
    return;
  }
  const bool geometry = host::isGeometry(number);
  Section& section = sheet.section(number);
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view which = attribute.name();
    if (which == "N" || (which == "IX" && geometry)) continue;
    if (which == "Del") {
      section.deleted = truth(attribute.value());
    } else {
      keepAttribute(node, attribute, extrasOf<CarriedSection>(section.extras).attributes);
    }
  }
  section.rows.reserve(section.rows.size() + static_cast<std::size_t>(std::distance(node.begin(), node.end())) / 2);
  RowFinder finder(section);
  for (const pugi::xml_node child : node) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view kind = localName(child);
    const char* const cellName = child.attribute("N").value();
    if (kind == "Row") {
      readRow(state, child, section, finder);
    } else if (kind == "Cell" && geometry && *cellName && !saysNothing(child)) {
      Row& component = finder.rowOf(RowKey::index(0));
      const Column column = host::columnOrNew(number, cellName);
      readCellElement(state, child, {number, component.key, column}, component.at(column), component.extras);
    } else {
      extrasOf<CarriedSection>(section.extras).contents += rawXml(child);
    }
  }
  const auto byIndex = [](const Row& a, const Row& b) {
    return !a.key.isNamed() && !b.key.isNamed() && a.key.index() < b.key.index();
  };
  if (!std::ranges::is_sorted(section.rows, byIndex)) {
    // Named rows keep their order in front; an order that mixes both kinds would not be one.
    std::ranges::stable_sort(section.rows, {}, [](const Row& row) {
      return row.key.isNamed() ? std::int64_t{-1} : static_cast<std::int64_t>(row.key.index());
    });
  }
}

}  // namespace

CarriedSheet& carriedOf(host::Sheet& sheet) { return extrasOf<CarriedSheet>(sheet.extras); }

void readNames(pugi::xml_node node, std::string& name, std::string& universalName, CarriedName& carry) {
  const pugi::xml_attribute local = node.attribute("Name"), universal = node.attribute("NameU");
  name = local ? local.value() : universal.value();
  universalName = universal ? universal.value() : local.value();
  carry.known = true;
  carry.name = name;
  carry.universalName = universalName;
  carry.hasName = static_cast<bool>(local);
  carry.hasUniversalName = static_cast<bool>(universal);
  carry.isCustomName = node.attribute("IsCustomName").value();
  carry.isCustomUniversalName = node.attribute("IsCustomNameU").value();
}

bool needsCarrying(const CarriedName& names) { return names.hasName || names.hasUniversalName; }

bool readStyleAttribute(const ReadState& state, host::Sheet& sheet, std::string_view name, std::string_view value) {
  host::SheetId* const slot = name == "LineStyle"   ? &sheet.lineStyle
                              : name == "FillStyle" ? &sheet.fillStyle
                              : name == "TextStyle" ? &sheet.textStyle
                                                    : nullptr;
  if (!slot) return false;
  const auto found = state.styles.find(wholeNumber(value, -1));
  if (found == state.styles.end()) return false;
  *slot = found->second;
  return true;
}

void readSheetChild(ReadState& state, host::Sheet& sheet, pugi::xml_node child) {
  state.sheet = sheet.id;
  const std::string_view kind = localName(child);
  const char* const name = child.attribute("N").value();
  if (kind == "Cell" && *name && !saysNothing(child)) {
    const CellKey key = host::objectCellOrNew(name);
    host::Cell& cell = sheet.local(key);
    Row* const row = sheet.find(SectionNumber::Object)->find(key.row);
    readCellElement(state, child, key, cell, row->extras);
  } else if (kind == "Section") {
    readSection(state, sheet, child);
  } else {
    carriedOf(sheet).contents += rawXml(child);
  }
}

void readSheetAttributes(ReadState& state, host::Sheet& sheet, pugi::xml_node node) {
  static constexpr std::string_view known[] = {"ID", "Name", "NameU", "IsCustomName", "IsCustomNameU"};
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (std::ranges::find(known, name) != std::end(known)) continue;
    if (name == "UniqueID") {
      sheet.uniqueId = attribute.value();
    } else if (!readStyleAttribute(state, sheet, name, attribute.value())) {
      keepAttribute(node, attribute, carriedOf(sheet).attributes);
    }
  }
}

void readPlainSheet(ReadState& state, host::Sheet& sheet, pugi::xml_node node) {
  readSheetAttributes(state, sheet, node);
  for (const pugi::xml_node child : node) {
    if (child.type() == pugi::node_element) readSheetChild(state, sheet, child);
  }
}

}  // namespace quorvel::formats
