#include "formats/vdx/sheet_reader.h"

#include <algorithm>

#include "base/text.h"
#include "formats/common/row_types.h"
#include "formats/common/sheet_reader.h"
#include "formats/vdx/cell_element.h"
#include "formats/vdx/sheet_writer.h"

namespace quorvel::formats::vdx {
namespace {

using host::CellKey;
using host::Column;
using host::Row;
using host::RowKey;
using host::Section;
using host::SectionNumber;

/// The row, made at the end when missing.
Row& rowOf(FileState& state, host::SheetId sheet, Section& section, RowKey key) {
  constexpr std::size_t indexedFrom = 48;
  const std::size_t count = section.rows.size();
  if (count < indexedFrom) {
    if (Row* const found = section.find(key)) return *found;
  } else {
    auto& places = state.rowPlaces[{sheet, section.number}];
    for (std::size_t i = places.size(); i < count; ++i) places.try_emplace(section.rows[i].key.packed(), i);
    const auto found = places.find(key.packed());
    if (found != places.end() && section.rows[found->second].key == key) return section.rows[found->second];
  }
  section.rows.emplace_back();
  section.rows.back().key = key;
  return section.rows.back();
}

void keepInRow(Row& row, pugi::xml_node child) { extrasOf<CarriedRow>(row.extras).olderContents += rawXml(child); }

void keepAttributes(Row& row, pugi::xml_node node) {
  AttributeList& kept = extrasOf<CarriedRow>(row.extras).olderAttributes;
  kept.clear();
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (name != "Del" && !name.starts_with("xmlns")) keepAttribute(node, attribute, kept);
  }
}

/// "XForm", "Line" …: cells that the sheet has once.
void readObjectRow(FileState& state, host::Sheet& sheet, pugi::xml_node node, Vocabulary vocabulary, int number) {
  Section& object = sheet.section(SectionNumber::Object);
  const RowKey rowKey = RowKey::index(static_cast<std::uint32_t>(number));
  const auto place = std::ranges::lower_bound(object.rows, rowKey, {}, &Row::key);
  Row& row = place != object.rows.end() && place->key == rowKey ? *place : *object.rows.emplace(place);
  row.key = rowKey;
  if (vocabulary == Vocabulary::Core && node.first_attribute()) {
    keepAttributes(row, node);
    // Nothing in the engine answers to a deleted group of cells.
    if (const pugi::xml_attribute deleted = node.attribute("Del"))
      extrasOf<CarriedRow>(row.extras).olderAttributes.emplace_back("Del", deleted.value());
  }
  for (const pugi::xml_node child : node) {
    if (child.type() != pugi::node_element) continue;
    const CellKey key = host::objectCell(localName(child));
    if (key && key.row == rowKey && vocabularyOf(key) <= vocabulary) {
      readCell(state, child, vocabulary, key, row);
    } else if (vocabulary == Vocabulary::Core) {
      keepInRow(row, child);
    } else {
      XmlWriter writer;
      startElement(writer, vocabulary, elementOfObjectRow(static_cast<std::uint32_t>(number)), true);
      carriedOf(sheet).olderContents += writer.raw(rawXml(child)).end().take();
    }
  }
}

void readRowCells(FileState& state, pugi::xml_node node, Vocabulary vocabulary, SectionNumber section, Row& row) {
  for (const pugi::xml_node child : node) {
    if (child.type() != pugi::node_element) continue;
    const Maybe<Column> column = host::columnOf(section, localName(child));
    if (column) {
      readCell(state, child, vocabulary, {section, row.key, *column}, row);
    } else {
      keepInRow(row, child);
    }
  }
}

void readTabs(FileState& state, pugi::xml_node node, Row& row) {
  int next = 0;
  for (const pugi::xml_node tab : node) {
    if (tab.type() != pugi::node_element) continue;
    const int stop = wholeNumber(tab.attribute("IX").value(), next);
    if (localName(tab) != "Tab" || stop < 0 || !host::columnOf(SectionNumber::Tab, "Position" + std::to_string(stop))) {
      keepInRow(row, tab);
      continue;
    }
    next = stop + 1;
    for (const pugi::xml_node child : tab) {
      if (child.type() != pugi::node_element) continue;
      const std::string name = std::string(localName(child)) + std::to_string(stop);
      if (const Maybe<Column> column = host::columnOf(SectionNumber::Tab, name))
        readCell(state, child, Vocabulary::Core, {SectionNumber::Tab, row.key, *column}, row);
    }
  }
}

bool isComponentCell(SectionNumber section, std::string_view name) {
  const Maybe<Column> column = host::columnOf(section, name);
  return column && host::columnName({section, RowKey::index(0), *column}) == name;
}

void readGeometry(FileState& state, host::Sheet& sheet, pugi::xml_node node, Vocabulary vocabulary) {
  const int place = wholeNumber(node.attribute("IX").value(), 0);
  if (place < 0 || place > lastGeometryIndex) {
    carriedOf(sheet).olderContents += rawXml(node);
    return;
  }
  const auto number = static_cast<SectionNumber>(static_cast<int>(SectionNumber::Geometry) + place);
  Section& section = sheet.section(number);
  if (const pugi::xml_attribute deleted = node.attribute("Del")) section.deleted = truth(deleted.value());
  int next = 1;
  for (const pugi::xml_node child : node) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view name = localName(child);
    const int index = wholeNumber(child.attribute("IX").value(), next);
    if (const std::uint8_t type = rowTagOf(name); type != 0 && index > 0 && index <= largestRowIndex) {
      Row& row = rowOf(state, sheet.id, section, RowKey::index(static_cast<std::uint32_t>(index)));
      row.type = type;
      if (const pugi::xml_attribute deleted = child.attribute("Del")) row.deleted = truth(deleted.value());
      readRowCells(state, child, vocabulary, number, row);
      next = index + 1;
    } else if (isComponentCell(number, name)) {
      Row& component = rowOf(state, sheet.id, section, RowKey::index(0));
      readCell(state, child, vocabulary, {number, component.key, *host::columnOf(number, name)}, component);
    } else {
      extrasOf<CarriedSection>(section.extras).olderContents += rawXml(child);
    }
  }
}

bool goesByIndex(SectionNumber section) {
  switch (section) {
    case SectionNumber::Character:
    case SectionNumber::Paragraph:
    case SectionNumber::Tab:
    case SectionNumber::Scratch:
    case SectionNumber::TextField:
    case SectionNumber::Layer:
    case SectionNumber::Reviewer:
    case SectionNumber::Annotation:
      return true;
    default:
      return false;
  }
}

void readRow(FileState& state, host::Sheet& sheet, pugi::xml_node node, Vocabulary vocabulary, SectionNumber number) {
  Section& section = sheet.section(number);
  std::string name;
  if (!goesByIndex(number)) {
    name = node.attribute("NameU").value();
    if (name.empty()) name = node.attribute("Name").value();
    const pugi::xml_attribute id = node.attribute("ID");
    if (name.empty() && id && namesItsRows(number)) name = "Row_" + std::string(id.value());
  }
  int index = 0;
  if (name.empty()) {
    const pugi::xml_attribute given = node.attribute("IX"), id = node.attribute("ID");
    index = given ? wholeNumber(given.value(), -1)
            : id  ? wholeNumber(id.value(), 0) - 1
                  : static_cast<int>(section.rows.size());
  }
  if (index < 0 || index > largestRowIndex) {
    carriedOf(sheet).olderContents += rawXml(node);
    return;
  }
  const host::Atom atom = name.empty() ? host::Atom{} : host::intern(name);
  Row& row = rowOf(state, sheet.id, section,
                   name.empty() ? RowKey::index(static_cast<std::uint32_t>(index)) : RowKey::named(atom));
  row.name = atom;
  const std::string_view shown = node.attribute("Name").value();
  row.localName = name.empty() || shown.empty() || shown == name ? host::Atom{} : host::intern(shown);
  if (const pugi::xml_attribute deleted = node.attribute("Del")) row.deleted = truth(deleted.value());
  if (vocabulary == Vocabulary::Core && (!name.empty() || node.attribute("ID"))) keepAttributes(row, node);
  if (localName(node) == "ConnectionABCD") {
    AttributeList& attributes = extrasOf<CarriedRow>(row.extras).attributes;
    attributes.assign(1, {"T", "ConnectionABCD"});
  }
  if (number == SectionNumber::Tab) {
    readTabs(state, node, row);
  } else {
    readRowCells(state, node, vocabulary, number, row);
  }
}

}  // namespace

void readSheetChild(FileState& state, host::Sheet& sheet, pugi::xml_node child) {
  state.sheet = sheet.id;
  const std::string_view name = localName(child);
  Vocabulary vocabulary;
  if (!vocabularyOf(child, vocabulary)) {
    carriedOf(sheet).olderContents += rawXml(child);
  } else if (vocabulary == Vocabulary::Package) {
    // Our own writing puts there what this format has no words for.
    if (child.first_attribute()) takeCustomNames(child, carriedOf(sheet).names, carriedOf(sheet).attributes);
    for (const pugi::xml_node one : child) {
      if (one.type() == pugi::node_element) formats::readSheetChild(state, sheet, one);
    }
  } else if (const int row = objectRowOf(name); row >= 0) {
    readObjectRow(state, sheet, child, vocabulary, row);
  } else if (const SectionNumber section = sectionOf(name); section == SectionNumber::Geometry) {
    readGeometry(state, sheet, child, vocabulary);
  } else if (section != SectionNumber::None) {
    readRow(state, sheet, child, vocabulary, section);
  } else {
    carriedOf(sheet).olderContents += rawXml(child);
  }
}

void orderRows(host::Sheet& sheet) {
  // Named rows keep their order in front; an order that mixes both kinds would not be one.
  const auto order = [](const Row& row) {
    return row.key.isNamed() ? std::int64_t{-1} : static_cast<std::int64_t>(row.key.index());
  };
  for (Section& section : sheet.sections) {
    if (section.number != SectionNumber::Object && !std::ranges::is_sorted(section.rows, {}, order))
      std::ranges::stable_sort(section.rows, {}, order);
  }
}

void readPlainSheet(ReadState& state, host::Sheet& sheet, pugi::xml_node node) {
  readSheetAttributes(state, sheet, node);
  for (const pugi::xml_node child : node) {
    if (child.type() == pugi::node_element) readSheetChild(fileState(state), sheet, child);
  }
  orderRows(sheet);
}

}  // namespace quorvel::formats::vdx
