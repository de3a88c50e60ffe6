#include "formats/common/sheet_writer.h"

#include <algorithm>

#include "base/little_endian.h"
#include "formats/common/cell_text.h"
#include "formats/common/row_types.h"
#include "host/sheet/inheritance.h"

namespace quorvel::formats {
namespace {

using host::CellKey;
using host::Row;
using host::Section;
using host::SectionNumber;

void writeCells(XmlWriter& writer, SectionNumber section, const Row& row) {
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  for (const auto& [column, cell] : row.cells) writeCellElement(writer, {section, row.key, column}, cell, carry);
}

/// The name of a row without one in sections whose rows have names in all files; formulas that say a number mean the
/// row at that place. Empty in others, and when another row has the name.
std::string nameInFile(const Section& section, const Row& row) {
  if (section.number != SectionNumber::Action && section.number != SectionNumber::Control) return {};
  const std::string name = "Row_" + std::to_string(row.key.index() + 1);
  return section.find(host::RowKey::named(host::intern(name))) ? std::string() : name;
}

void writeRow(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet, const Section& section,
              const Row& row) {
  const CarriedRow* const carry = carried<CarriedRow>(row.extras);
  writer.start("Row");
  if (row.key.isNamed()) {
    writer.attribute("N", host::spelling(row.name ? row.name : row.key.name()));
    if (row.localName) writer.attribute("LocalName", host::spelling(row.localName));
  } else if (const std::string name = nameInFile(section, row); !name.empty()) {
    writer.attribute("N", name);
  } else {
    writer.attribute("IX", static_cast<long>(row.key.index()));
  }
  const bool geometry = host::isGeometry(section.number);
  const bool saysType =
      carry && std::ranges::find(carry->attributes, "T", &AttributeList::value_type::first) != carry->attributes.end();
  if (geometry && !saysType) {
    // Other programs refuse a row without its kind, also one that only hides the master's.
    std::string_view type = rowTypeName(rowTypeOf(store, sheet, section.number, row));
    if (type.empty() && row.deleted) type = "LineTo";
    if (!type.empty()) writer.attribute("T", type);
  }
  if (row.deleted) writer.attribute("Del", "1");
  if (carry) {
    for (const auto& [name, value] : carry->attributes) {
      // Of deleted rows only those of Geometry have a kind.
      if (geometry || !row.deleted || name != "T") writer.attribute(name, value);
    }
  }
  writeCells(writer, section.number, row);
  if (carry) writer.raw(carry->contents);
  writer.end();
}

}  // namespace

void writeMetafileSize(XmlWriter& writer, const host::ForeignData& picture, const CarriedForeign* carry) {
  const auto says = [&](std::string_view name) {
    return carry &&
           std::ranges::find(carry->attributes, name, &AttributeList::value_type::first) != carry->attributes.end();
  };
  const LittleEndian bytes(picture.bytes);
  constexpr std::size_t header = 88;
  if (picture.type != "EnhMetaFile" || says("ExtentX") || picture.bytes.size() < header || bytes.u32(0) != 1) return;
  constexpr int anisotropic = 8;
  if (!says("MappingMode")) writer.attribute("MappingMode", anisotropic);
  writer.attribute("ExtentX", static_cast<long>(bytes.i32(32)) - bytes.i32(24));
  writer.attribute("ExtentY", static_cast<long>(bytes.i32(36)) - bytes.i32(28));
}

void writeCellElement(XmlWriter& writer, const CellKey& key, const host::Cell& cell, const CarriedRow* row) {
  const host::CellDefinition* definition = host::definitionOf(key);
  const CarriedCell* carry = row ? row->find(key.column) : nullptr;
  writer.start("Cell");
  writer.attribute("N", carry && !carry->name.empty() ? std::string_view(carry->name) : host::columnName(key));
  const bool asRead = carry && stillReads(*carry, key, definition, cell);
  if (asRead) {
    if (carry->hasValue && !carry->valueIsContent) writer.attribute("V", carry->value);
    if (carry->hasUnit) writer.attribute("U", carry->unit);
    if (carry->hasError) writer.attribute("E", carry->error);
    if (carry->hasFormula) writer.attribute("F", carry->formula);
  } else {
    thread_local WrittenCell written;
    writeCell(key, definition, cell, written);
    writer.attribute("V", written.value);
    if (!written.unit.empty()) writer.attribute("U", written.unit);
    if (!written.error.empty()) writer.attribute("E", written.error);
    if (written.hasFormula) writer.attribute("F", written.formula);
  }
  if (carry) {
    writeAttributes(writer, carry->attributes);
    if (asRead && carry->valueIsContent) writer.text(carry->value);
    writer.raw(carry->contents);
  }
  writer.end();
}

void writeAttributes(XmlWriter& writer, const AttributeList& attributes) {
  for (const auto& [name, value] : attributes) writer.attribute(name, value);
}

void writeNames(XmlWriter& writer, const CarriedName* carry, const std::string& name,
                const std::string& universalName) {
  const bool known = carry && carry->known;
  const bool sameUniversal = known && carry->universalName == universalName;
  const bool same = known && carry->name == name;
  if (sameUniversal ? carry->hasUniversalName : !universalName.empty()) {
    writer.attribute("NameU", universalName);
    if (!sameUniversal) writer.attribute("IsCustomNameU", "1");
  }
  if (sameUniversal && !carry->isCustomUniversalName.empty())
    writer.attribute("IsCustomNameU", carry->isCustomUniversalName);
  if (same ? carry->hasName : !name.empty()) {
    writer.attribute("Name", name);
    if (!same) writer.attribute("IsCustomName", "1");
  }
  if (same && !carry->isCustomName.empty()) writer.attribute("IsCustomName", carry->isCustomName);
}

bool namesAnotherMaster(const host::Store& store, const host::Sheet& sheet, std::string_view attribute,
                        std::string_view value) {
  if (attribute != "Master") return false;
  const host::Document* const document = store.document(sheet.document);
  return document && std::ranges::any_of(document->masters, [&](host::MasterId master) {
           return std::to_string(store.master(master)->fileId) == value;
         });
}

void writeStyleAttributes(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet) {
  const auto style = [&](std::string_view name, host::SheetId id) {
    if (const host::Sheet* const found = store.sheet(id)) writer.attribute(name, found->shapeId);
  };
  style("LineStyle", sheet.lineStyle);
  style("FillStyle", sheet.fillStyle);
  style("TextStyle", sheet.textStyle);
}

void writeSheetAttributes(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet) {
  writeStyleAttributes(writer, store, sheet);
  if (!sheet.uniqueId.empty()) writer.attribute("UniqueID", sheet.uniqueId);
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  if (!carry) return;
  AttributeList attributes = carry->attributes;
  std::erase_if(attributes,
                [&](const auto& each) { return namesAnotherMaster(store, sheet, each.first, each.second); });
  writeAttributes(writer, attributes);
}

std::uint8_t rowTypeOf(const host::Store& store, const host::Sheet& sheet, SectionNumber section, const Row& row) {
  std::uint8_t type = row.type;
  const host::Sheet* at = store.sheet(sheet.prototype);
  for (int depth = 0; type == 0 && at && depth < 64; ++depth) {
    const Section* const inherited = at->find(section);
    const Row* const same = inherited ? inherited->find(row.key) : nullptr;
    if (same) type = same->type;
    at = store.sheet(at->prototype);
  }
  return type;
}

void writeSection(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet, const Section& section) {
  const CarriedSection* const carry = carried<CarriedSection>(section.extras);
  const bool geometry = host::isGeometry(section.number);
  writer.start("Section").attribute("N", host::fileNameOf(section.number));
  if (geometry) writer.attribute("IX", static_cast<long>(section.number) - static_cast<long>(SectionNumber::Geometry));
  if (section.deleted) writer.attribute("Del", "1");
  if (carry) writeAttributes(writer, carry->attributes);
  for (const Row& row : section.rows) {
    if (geometry && row.key == host::RowKey::index(0)) writeCells(writer, section.number, row);
  }
  if (carry) writer.raw(carry->contents);
  for (const Row& row : section.rows) {
    if (!geometry || row.key != host::RowKey::index(0)) writeRow(writer, store, sheet, section, row);
  }
  writer.end();
}

void writeSheetContents(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet) {
  if (sheet.holdsComputed) {
    writeSheetContents(writer, store, host::withoutComputed(sheet));
    return;
  }
  if (const Section* const object = sheet.find(SectionNumber::Object)) {
    for (const Row& row : object->rows) {
      writeCells(writer, SectionNumber::Object, row);
      if (const CarriedRow* const carry = carried<CarriedRow>(row.extras)) writer.raw(carry->contents);
    }
  }
  if (const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras)) writer.raw(carry->contents);
  for (const Section& section : sheet.sections) {
    if (section.number != SectionNumber::Object) writeSection(writer, store, sheet, section);
  }
}

}  // namespace quorvel::formats
