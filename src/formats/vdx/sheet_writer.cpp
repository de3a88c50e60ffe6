#include "formats/vdx/sheet_writer.h"

#include <algorithm>
#include <array>

#include "base/text.h"
#include "formats/common/cell_text.h"
#include "formats/common/row_types.h"
#include "formats/package/xml_reading.h"
#include "formats/vdx/cell_element.h"
#include "formats/vdx/image_bytes.h"
#include "formats/vdx/relative_rows.h"
#include "formats/vdx/whole_rows.h"
#include "host/sheet/bitmap_file.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats::vdx {
namespace {

using host::CellKey;
using host::Column;
using host::Row;
using host::RowKey;
using host::Section;
using host::SectionNumber;

constexpr Vocabulary ownVocabularies[] = {Vocabulary::Core, Vocabulary::Second, Vocabulary::Third};

/// Rows of the second kind name their cells A to D.
bool isLetteredConnection(const CarriedRow* carry) {
  return carry && std::ranges::any_of(carry->attributes, [](const auto& one) {
           return one.first == "T" && one.second == "ConnectionABCD";
         });
}

Vocabulary vocabularyIn(const Row& row, const CellKey& key) {
  const Vocabulary vocabulary = vocabularyOf(key);
  if (key.section != SectionNumber::Connection || !isLetteredConnection(carried<CarriedRow>(row.extras)))
    return vocabulary;
  constexpr Column lastLettered = 5;
  return key.column <= lastLettered ? Vocabulary::Core : Vocabulary::Package;
}

/// The vocabulary in which a cell of the core is said again; Core for none.
Vocabulary saidAgainIn(const CellKey& key, const host::Cell& cell, const CarriedRow* row) {
  if (key.section != SectionNumber::Object || vocabularyOf(key) != Vocabulary::Core) return Vocabulary::Core;
  const CarriedCell* const carry = row ? row->find(key.column) : nullptr;
  if (carry && !carry->older.empty() && stillReads(*carry, key, host::definitionOf(key), cell))
    return static_cast<Vocabulary>(carry->olderPlace);
  return usesLaterFunctions(cell) ? Vocabulary::Second : Vocabulary::Core;
}

bool holds(const Row& row, SectionNumber section, Vocabulary vocabulary) {
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  const auto fits = [&](Column column) { return vocabularyIn(row, {section, row.key, column}) == vocabulary; };
  if (std::ranges::any_of(row.cells, [&](const auto& one) {
        return fits(one.first) || (vocabulary != Vocabulary::Core &&
                                   saidAgainIn({section, row.key, one.first}, one.second, carry) == vocabulary);
      }))
    return true;
  return carry && std::ranges::any_of(carry->cells,
                                      [&](const CarriedCell& one) { return !one.older.empty() && fits(one.column); });
}

constexpr std::string_view writtenAttributes[] = {"LineStyle", "FillStyle", "TextStyle", "Master", "MasterShape"};

bool isNumber(std::string_view text) { return wholeNumber(text, -1) >= 0; }

/// True for a sheet whose size is not that of the one it inherits from.
bool hasOwnSize(const host::Store& store, const host::Sheet& sheet) {
  if (!sheet.prototype) return false;
  return std::ranges::any_of(
      std::array{host::objectCell("Width"), host::objectCell("Height")}, [&](const CellKey& key) {
        return host::cellNumber(store, sheet.id, key) != host::cellNumber(store, sheet.prototype, key);
      });
}

/// The attributes that the row was read with, when they still name it.
const AttributeList* attributesOf(const Row& row, SectionNumber section) {
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  if (!carry || carry->olderAttributes.empty()) return nullptr;
  const auto value = [&](std::string_view name) {
    const auto found = std::ranges::find(carry->olderAttributes, name, &AttributeList::value_type::first);
    return found == carry->olderAttributes.end() ? std::string() : found->second;
  };
  if (!row.key.isNamed()) return &carry->olderAttributes;
  std::string name = value("NameU");
  if (name.empty()) name = value("Name");
  if (name.empty() && namesItsRows(section)) name = "Row_" + value("ID");
  const bool sameLocal =
      value("Name").empty() || value("Name") == host::spelling(row.localName ? row.localName : row.name);
  return sameLocal && RowKey::named(host::intern(name)) == row.key ? &carry->olderAttributes : nullptr;
}

int carriedId(const Row& row, SectionNumber section) {
  const AttributeList* const attributes = attributesOf(row, section);
  if (!attributes) return -1;
  const auto found = std::ranges::find(*attributes, "ID", &AttributeList::value_type::first);
  return found == attributes->end() ? -1 : wholeNumber(found->second, -1);
}

}  // namespace

std::string selfContained(const std::string& xml) {
  if (xml.empty()) return {};
  std::string text = "<a>" + xml + "</a>";
  pugi::xml_document document;
  if (!parseXml(document, text).empty()) return {};
  struct Walker : pugi::xml_tree_walker {
    bool declared = true;
    bool for_each(pugi::xml_node& node) override {
      const auto has = [&](std::string_view name) {
        const std::size_t colon = name.find(':');
        if (colon == std::string_view::npos || name.starts_with("xml")) return true;
        const std::string declaration = "xmlns:" + std::string(name.substr(0, colon));
        for (pugi::xml_node at = node; at; at = at.parent()) {
          if (at.attribute(declaration.c_str())) return true;
        }
        return false;
      };
      declared = declared && has(node.name());
      for (const pugi::xml_attribute attribute : node.attributes()) declared = declared && has(attribute.name());
      return declared;
    }
  };
  std::string kept;
  for (pugi::xml_node child : document.document_element()) {
    if (child.type() != pugi::node_element) continue;
    if (localName(child) == "Cell" && !child.attribute("V") && !child.first_child() &&
        std::string_view(child.attribute("F").value()) == "Inh")
      continue;
    Walker walker;
    walker.for_each(child);
    child.traverse(walker);
    if (walker.declared) kept += rawXml(child);
  }
  return kept;
}

AttributeList packageOnly(const AttributeList& attributes, std::span<const std::string_view> known) {
  AttributeList rest;
  for (const auto& one : attributes) {
    // What has a prefix needs a declaration that may not be here.
    if (std::ranges::find(known, one.first) == known.end() && one.first.find(':') == std::string::npos &&
        one.first != "xmlns")
      rest.push_back(one);
  }
  return rest;
}

void addCustomNames(AttributeList& attributes, const CarriedName& names, const std::string& name,
                    const std::string& universalName) {
  if (!names.isCustomUniversalName.empty() && names.universalName == universalName)
    attributes.emplace_back("IsCustomNameU", names.isCustomUniversalName);
  if (!names.isCustomName.empty() && names.name == name) attributes.emplace_back("IsCustomName", names.isCustomName);
}

void takeCustomNames(pugi::xml_node node, CarriedName& names, AttributeList& attributes) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (name == "IsCustomName") {
      names.isCustomName = attribute.value();
    } else if (name == "IsCustomNameU") {
      names.isCustomUniversalName = attribute.value();
    } else if (name != "ID" && !name.starts_with("xmlns")) {
      attributes.emplace_back(name, attribute.value());
    }
  }
}

AttributeList SheetWriter::packageAttributes(const host::Sheet& sheet) {
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  if (!carry) return {};
  AttributeList attributes = packageOnly(carry->attributes, writtenAttributes);
  addCustomNames(attributes, carry->names, sheet.name, sheet.universalName);
  return attributes;
}

void writeBothNames(XmlWriter& writer, const CarriedName* carry, const std::string& name,
                    const std::string& universalName) {
  const bool known = carry && carry->known;
  if (known && carry->universalName == universalName ? carry->hasUniversalName : !universalName.empty())
    writer.attribute("NameU", universalName);
  if (known && carry->name == name ? carry->hasName : !name.empty()) writer.attribute("Name", name);
}

void SheetWriter::names(XmlWriter& writer, const host::Sheet& sheet) {
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  writeBothNames(writer, carry ? &carry->names : nullptr, sheet.name, sheet.universalName);
}

void SheetWriter::attributes(XmlWriter& writer, const host::Sheet& sheet) {
  writeStyleAttributes(writer, store_, sheet);
  const bool mayBearId = sheet.kind != host::SheetKind::Style;
  if (mayBearId && !sheet.uniqueId.empty()) writer.attribute("UniqueID", sheet.uniqueId);
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  if (!carry) return;
  // Those of links that lead nowhere; the schema allows no others.
  for (const auto& [name, value] : carry->attributes) {
    const bool isWritten = std::ranges::find(writtenAttributes, name) != std::end(writtenAttributes);
    if (isWritten && isNumber(value) && !namesAnotherMaster(store_, sheet, name, value)) writer.attribute(name, value);
  }
}

void SheetWriter::cells(XmlWriter& writer, const Row& row, SectionNumber section, Vocabulary vocabulary) {
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  const bool lettered = section == SectionNumber::Connection && isLetteredConnection(carry);
  static constexpr std::string_view letteredNames[] = {"X", "Y", "A", "B", "C", "D"};
  // Some elements need their cells in the order of the columns, so that those that are no cells go among the others.
  std::vector<std::pair<Column, const CarriedCell*>> absent;
  if (carry) {
    for (const CarriedCell& one : carry->cells) {
      if (!one.older.empty() && !row.find(one.column)) absent.emplace_back(one.column, &one);
    }
    std::ranges::sort(absent, {}, &std::pair<Column, const CarriedCell*>::first);
  }
  auto next = absent.begin();
  const auto writeAbsent = [&](int before) {
    for (; next != absent.end() && next->first < before; ++next) {
      if (vocabularyIn(row, {section, row.key, next->first}) == vocabulary) writer.raw(next->second->older);
    }
  };
  for (const auto& [column, cell] : row.cells) {
    writeAbsent(column);
    const CellKey key{section, row.key, column};
    if (const Vocabulary later = saidAgainIn(key, cell, carry); later != Vocabulary::Core) {
      const CarriedCell* const text = carry ? carry->find(column) : nullptr;
      const bool asRead = text && text->olderPlace == static_cast<int>(later) && !text->older.empty();
      if (vocabulary == later) {
        if (asRead) {
          writer.raw(text->older);
        } else {
          writeCellAgain(writer, later, key, cell);
        }
      } else if (vocabulary == Vocabulary::Core && asRead) {
        writer.raw(text->olderFallback);
      } else if (vocabulary == Vocabulary::Core) {
        host::Cell plain;
        plain.value = cell.value;
        writeCell(writer, cellElement(key), key, plain, nullptr, fonts_);
      }
      continue;
    }
    if (vocabularyIn(row, key) != vocabulary) continue;
    writeCell(writer, lettered ? letteredNames[column] : cellElement(key), key, cell, carry, fonts_);
  }
  writeAbsent(1 << 16);
  if (carry && vocabulary == Vocabulary::Core) writer.raw(carry->olderContents);
}

void SheetWriter::objectRow(XmlWriter& writer, const Row& row) {
  const std::string_view element = elementOfObjectRow(row.key.index());
  if (element.empty()) return;
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  for (const Vocabulary vocabulary : ownVocabularies) {
    const bool core = vocabulary == Vocabulary::Core;
    const bool brought = core && carry && (!carry->olderContents.empty() || !carry->olderAttributes.empty());
    if (!brought && !holds(row, SectionNumber::Object, vocabulary)) continue;
    startElement(writer, vocabulary, element, true);
    if (brought) writeAttributes(writer, carry->olderAttributes);
    cells(writer, row, SectionNumber::Object, vocabulary);
    writer.end();
  }
}

SheetWriter::RowIds SheetWriter::rowIds(const host::Sheet& sheet, SectionNumber section) {
  RowIds ids;
  if (sheet.prototype) ids = inheritedRowIds(sheet.prototype, section);
  const Section* const own = sheet.find(section);
  if (!own) return ids;
  int last = 0;
  for (const auto& [key, id] : ids) last = std::max(last, id);
  for (const Row& row : own->rows) {
    const int id = carriedId(row, section);
    if (id > 0 && row.key.isNamed()) ids[row.key.packed()] = id;
    last = std::max(last, id);
  }
  for (const Row& row : own->rows) {
    if (row.key.isNamed() && ids.try_emplace(row.key.packed(), last + 1).second) ++last;
  }
  return ids;
}

const SheetWriter::RowIds& SheetWriter::inheritedRowIds(host::SheetId sheet, SectionNumber section) {
  const auto known = inherited_.find({sheet, section});
  if (known != inherited_.end()) return known->second;
  RowIds ids = rowIds(*store_.sheet(sheet), section);
  return inherited_.emplace(std::pair(sheet, section), std::move(ids)).first->second;
}

int SheetWriter::otherNumber(const host::Sheet& sheet, SectionNumber section, RowKey key) const {
  if (!namesItsRows(section)) return 0;
  const auto named = [](int number) { return RowKey::named(host::intern("Row_" + std::to_string(number))); };
  const auto indexed = [](int number) { return RowKey::index(static_cast<std::uint32_t>(number) - 1); };
  const std::string_view name = key.isNamed() ? host::spelling(key.name()) : std::string_view();
  if (key.isNamed() && !startsWithIgnoringCase(name, "Row_")) return 0;
  const int number = key.isNamed() ? wholeNumber(name.substr(4), 0) : static_cast<int>(key.index()) + 1;
  constexpr int largestNumber = 1'000'000;
  if (number <= 0 || number > largestNumber) return 0;
  const auto exists = [&](host::SheetId holder, RowKey other) {
    return host::rowExists(store_, holder, section, other, false);
  };
  const host::Sheet* const prototype = sheet.prototype ? store_.sheet(sheet.prototype) : nullptr;
  if (prototype && exists(prototype->id, key)) return otherNumber(*prototype, section, key);
  // The sheet's own row gets the other number, not the one that it inherits; of two rows of its own the one with the
  // name.
  const bool isTaken =
      key.isNamed() ? exists(sheet.id, indexed(number)) : prototype && exists(prototype->id, named(number));
  if (!isTaken) return 0;
  int other = number;
  do other += 100;
  while (exists(sheet.id, named(other)) || exists(sheet.id, indexed(other)));
  return other;
}

void SheetWriter::row(XmlWriter& writer, const host::Sheet& sheet, const Row& row, SectionNumber section,
                      Vocabulary vocabulary, const RowIds& ids) {
  const bool lettered = section == SectionNumber::Connection && isLetteredConnection(carried<CarriedRow>(row.extras));
  startElement(writer, vocabulary, lettered ? "ConnectionABCD" : elementOf(section), true);
  if (const int other = otherNumber(sheet, section, row.key)) {
    if (row.key.isNamed()) writer.attribute("NameU", "Row_" + std::to_string(other));
    writer.attribute("ID", other);
  } else if (const AttributeList* const attributes = attributesOf(row, section)) {
    writeAttributes(writer, *attributes);
  } else if (row.key.isNamed()) {
    writer.attribute("NameU", host::spelling(row.name ? row.name : row.key.name()));
    if (row.localName) writer.attribute("Name", host::spelling(row.localName));
    writer.attribute("ID", ids.at(row.key.packed()));
  } else {
    // Named rows have numbers from 1 and no index.
    const bool byId = namesItsRows(section);
    writer.attribute(byId ? "ID" : "IX", static_cast<long>(row.key.index()) + (byId ? 1 : 0));
  }
  if (row.deleted) writer.attribute("Del", "1");
  if (section == SectionNumber::Tab) {
    tabs(writer, row);
  } else {
    cells(writer, row, section, vocabulary);
  }
  writer.end();
}

void SheetWriter::tabs(XmlWriter& writer, const Row& row) {
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  constexpr int columnsPerStop = 3;
  int open = -1;
  for (const auto& [column, cell] : row.cells) {
    if (column >= host::firstUnknownColumn || column == 0) continue;
    const int stop = (column - 1) / columnsPerStop;
    if (stop != open) {
      if (open >= 0) writer.end();
      writer.start("Tab").attribute("IX", stop);
      open = stop;
    }
    const CellKey key{SectionNumber::Tab, row.key, column};
    writeCell(writer, cellElement(key), key, cell, carry, fonts_);
  }
  if (open >= 0) writer.end();
  if (carry) writer.raw(carry->olderContents);
}

void SheetWriter::geometry(XmlWriter& writer, const host::Sheet& sheet, const Section& section) {
  const long number = static_cast<long>(section.number) - static_cast<long>(SectionNumber::Geometry);
  const CarriedSection* const carry = carried<CarriedSection>(section.extras);
  const std::vector<host::RowView> views = host::rowsOf(store_, sheet.id, section.number);
  const bool whole = hasOwnSize(store_, sheet);
  const Row* const component = section.find(RowKey::index(0));
  std::vector<Row> rows;
  std::ranges::copy_if(section.rows, std::back_inserter(rows), [&](const Row& row) { return &row != component; });
  for (const host::RowView& view : views) {
    if (!whole || section.deleted || !isRelative(host::RowTag(view.type)) || section.find(view.key)) continue;
    rows.emplace_back().key = view.key;
  }
  std::ranges::stable_sort(rows, {}, &Row::key);
  for (const Vocabulary vocabulary : ownVocabularies) {
    const bool core = vocabulary == Vocabulary::Core;
    if (!core && !(component && holds(*component, section.number, vocabulary))) continue;
    startElement(writer, vocabulary, "Geom", true);
    writer.attribute("IX", number);
    if (section.deleted && core) writer.attribute("Del", "1");
    if (component) cells(writer, *component, section.number, vocabulary);
    for (const Row& row : rows) {
      if (!core) break;
      const std::uint8_t type = rowTypeOf(store_, sheet, section.number, row);
      if (isRelative(host::RowTag(type))) {
        writeRelativeRow(writer, store_, sheet, section.number, row, host::RowTag(type), whole && !row.deleted);
        continue;
      }
      // The kind of a deleted row may be unknown; readers need one, and none of them draws it.
      const std::string_view name = type == 0 && row.deleted ? "LineTo" : rowTypeName(type);
      if (name.empty()) continue;
      writer.start(name).attribute("IX", static_cast<long>(row.key.index()));
      if (row.deleted) writer.attribute("Del", "1");
      cells(writer, row, section.number, vocabulary);
      writer.end();
    }

    if (carry && core) writer.raw(carry->olderContents);
    writer.end();
  }
}

void SheetWriter::inheritedGeometry(XmlWriter& writer, const host::Sheet& sheet) {
  if (!hasOwnSize(store_, sheet)) return;
  for (const SectionNumber number : host::sectionsOf(store_, sheet.id)) {
    if (!host::isGeometry(number) || sheet.find(number)) continue;
    const std::vector<host::RowView> views = host::rowsOf(store_, sheet.id, number);
    if (std::ranges::none_of(views, [](const host::RowView& view) { return isRelative(host::RowTag(view.type)); }))
      continue;
    Section none;
    none.number = number;
    geometry(writer, sheet, none);
  }
}

void SheetWriter::deletedRows(XmlWriter& writer, const host::Sheet& sheet, SectionNumber section) {
  if (!sheet.prototype) return;
  const RowIds& ids = inheritedRowIds(sheet.prototype, section);
  for (const host::RowView& view : host::rowsOf(store_, sheet.prototype, section)) {
    if (const Section* const own = sheet.find(section); own && own->find(view.key)) continue;
    Row row;
    row.key = view.key;
    row.name = view.name;
    row.deleted = true;
    this->row(writer, sheet, row, section, Vocabulary::Core, ids);
  }
}

void SheetWriter::section(XmlWriter& writer, const host::Sheet& sheet, const Section& section) {
  if (elementOf(section.number).empty()) return;
  if (host::isGeometry(section.number)) {
    geometry(writer, sheet, section);
    return;
  }
  if (section.deleted) deletedRows(writer, sheet, section.number);
  const RowIds ids = rowIds(sheet, section.number);
  const bool isWhole = !wholeRow(section.number, firstRelease).empty();
  Row full;
  for (const Row& own : section.rows) {
    if (isWhole && !own.deleted) full = whole(store_, sheet, section.number, own, firstRelease);
    const Row& one = isWhole && !own.deleted ? full : own;
    row(writer, sheet, one, section.number, Vocabulary::Core, ids);
    for (const Vocabulary later : {Vocabulary::Second, Vocabulary::Third}) {
      if (holds(one, section.number, later)) row(writer, sheet, one, section.number, later, ids);
    }
  }
}

std::string SheetWriter::packageContents(const host::Sheet& sheet) const {
  XmlWriter writer;
  for (const Section& section : sheet.sections) {
    const bool object = section.number == SectionNumber::Object;
    const bool unknown = !object && elementOf(section.number).empty();
    Section rest;
    rest.number = section.number;
    rest.deleted = unknown && section.deleted;
    const CarriedSection* const carriedSection = carried<CarriedSection>(section.extras);
    const bool broughtSection =
        carriedSection && (!carriedSection->attributes.empty() || !carriedSection->contents.empty());
    if (broughtSection) rest.extras = section.extras;
    for (const Row& row : section.rows) {
      Row copy;
      copy.key = row.key;
      copy.name = row.name;
      for (const auto& [column, cell] : row.cells) {
        if (unknown || vocabularyIn(row, {section.number, row.key, column}) == Vocabulary::Package)
          copy.cells.emplace_back(column, cell);
      }
      const CarriedRow* const carry = carried<CarriedRow>(row.extras);
      if (object) {
        for (const auto& [column, cell] : copy.cells)
          writeCellElement(writer, {section.number, row.key, column}, cell, carry);
        continue;
      }
      const std::string contents = carry ? selfContained(carry->contents) : std::string();
      const bool brought = carry && (!contents.empty() || (!carry->attributes.empty() && !isLetteredConnection(carry)));
      if (brought || !copy.cells.empty()) {
        auto extras = std::make_shared<CarriedRow>();
        if (carry) *extras = *carry;
        extras->contents = contents;
        copy.extras = std::move(extras);
      }
      if (unknown) {
        copy.type = row.type;
        copy.deleted = row.deleted;
      }
      if (unknown || brought || !copy.cells.empty()) rest.rows.push_back(std::move(copy));
    }
    if (unknown || broughtSection || !rest.rows.empty()) {
      if (!object) writeSection(writer, store_, sheet, rest);
    }
  }
  if (const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras))
    writer.raw(selfContained(carry->contents)).raw(selfContained(carry->tail));
  return writer.take();
}

void SheetWriter::contents(XmlWriter& writer, const host::Sheet& sheet) {
  if (sheet.holdsComputed) {
    contents(writer, host::withoutComputed(sheet));
    return;
  }
  if (const Section* const object = sheet.find(SectionNumber::Object)) {
    for (const Row& row : object->rows) {
      if (isTextBlock(row)) {
        objectRow(writer, whole(store_, sheet, SectionNumber::Object, row, firstRelease));
      } else {
        objectRow(writer, row);
      }
    }
  }
  for (const Section& one : sheet.sections) {
    if (one.number != SectionNumber::Object) section(writer, sheet, one);
  }
  inheritedGeometry(writer, sheet);
  if (const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras)) writer.raw(carry->olderContents);
  const AttributeList attributes = packageAttributes(sheet);
  if (const std::string rest = packageContents(sheet); !rest.empty() || !attributes.empty()) {
    writer.start("Sheet").attribute("xmlns", namespaceOf(Vocabulary::Package));
    writeAttributes(writer, attributes);
    writer.raw(rest).end();
  }
}

void SheetWriter::picture(XmlWriter& writer, const host::ForeignData& picture) {
  const CarriedForeign* const carry = carried<CarriedForeign>(picture.extras);
  writer.start("ForeignData").attribute("ForeignType", picture.type);
  if (!picture.compression.empty()) writer.attribute("CompressionType", picture.compression);
  if (carry) {
    static constexpr std::string_view known[] = {"ObjectType",  "ShowAsIcon", "ObjectWidth", "ObjectHeight",
                                                 "MappingMode", "ExtentX",    "ExtentY",     "CompressionLevel"};
    for (const auto& [name, value] : carry->attributes) {
      if (std::ranges::find(known, name) != std::end(known)) writer.attribute(name, value);
    }
  }
  writeMetafileSize(writer, picture, carry);
  const bool fromPackage = !carry || !carry->part.empty();
  const bool bare = (carry && carry->olderLacksHeader) || (fromPackage && picture.type == "Bitmap");
  writer.raw(toBase64(bare ? host::withoutBitmapHeader(picture.bytes) : std::string_view(picture.bytes))).end();
}

}  // namespace quorvel::formats::vdx
