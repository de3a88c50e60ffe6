#include "formats/vsdx/sheet_writer.h"

#include <algorithm>

#include "base/little_endian.h"
#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"
#include "formats/vsdx/cell_text.h"
#include "formats/vsdx/names.h"
#include "formats/vsdx/repeated_text.h"
#include "formats/vsdx/row_types.h"
#include "host/sheet/inheritance.h"
#include "host/text/text.h"

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

void writeText(XmlWriter& writer, const host::Store& store, const host::Sheet& sheet, const CarriedSheet* carry) {
  const host::TextBody* const body = sheet.text                       ? sheet.text.get()
                                     : showsOtherFields(store, sheet) ? host::textOf(store, sheet.id)
                                                                      : nullptr;
  if (!body) return;
  if (sheet.text && carry && !carry->text.empty() && carry->textRead == sheet.text) {
    writer.raw(carry->text);
    return;
  }
  writer.start("Text");
  for (const host::TextPiece& piece : *body) {
    switch (piece.kind) {
      case host::TextPiece::Characters:
        writer.text(piece.text);
        break;
      case host::TextPiece::CharacterRun:
        writer.start("cp").attribute("IX", piece.index).end();
        break;
      case host::TextPiece::ParagraphRun:
        writer.start("pp").attribute("IX", piece.index).end();
        break;
      case host::TextPiece::TabRun:
        writer.start("tp").attribute("IX", piece.index).end();
        break;
      case host::TextPiece::Field:
        // What a field showed in the file it came from stands until the field changes.
        writer.start("fld").attribute("IX", piece.index);
        writer.text(sheet.text && !piece.text.empty() ? piece.text : host::fieldText(store, sheet.id, piece.index))
            .end();
        break;
    }
  }
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

namespace {

void writeForeign(XmlWriter& writer, PartContext& context, const host::ForeignData& picture) {
  const CarriedForeign* const carry = carried<CarriedForeign>(picture.extras);
  const PictureParts::Part& part = context.pictures.partOf(picture);
  const std::string_view type = carry && !carry->relationshipType.empty() ? std::string_view(carry->relationshipType)
                                : picture.type == "Object"                ? names::objectRelationship
                                                                          : names::imageRelationship;
  writer.start("ForeignData").attribute("ForeignType", picture.type);
  // A plain bitmap has no mark in a package.
  if (!picture.compression.empty() && picture.compression != "DIB")
    writer.attribute("CompressionType", picture.compression);
  if (carry) writeAttributes(writer, carry->attributes);
  writeMetafileSize(writer, picture, carry);
  const std::string id = context.relationships.idFor(context.part, type, part.name);
  ++context.usedIds[id];
  writer.start("Rel").attribute("r:id", id).end();
  if (carry) writer.raw(carry->contents);
  writer.end();
}

/// Raw XML without the elements that use relationship ids.
std::string withoutLinks(const std::string& xml) {
  std::string text = "<a>" + xml + "</a>";
  pugi::xml_document parsed;
  if (!parseXml(parsed, text).empty()) return {};
  std::string kept;
  for (const pugi::xml_node child : parsed.document_element()) {
    const std::string one = rawXml(child);
    if (usedIds(one).empty()) kept += one;
  }
  return kept;
}

class PackageDialect : public ShapeDialect {
 public:
  explicit PackageDialect(PartContext& context) : context_(context) {}
  void names(XmlWriter& writer, const host::Sheet& shape) override {
    const CarriedSheet* const carry = carried<CarriedSheet>(shape.extras);
    writeNames(writer, carry ? &carry->names : nullptr, shape.name, shape.universalName);
  }
  void attributes(XmlWriter& writer, const host::Sheet& shape) override {
    writeSheetAttributes(writer, context_.store, shape);
  }
  void contents(XmlWriter& writer, const host::Sheet& shape) override {
    if (const CarriedSheet* const carry = carried<CarriedSheet>(shape.extras); carry && linksLeadElsewhere(*carry)) {
      host::Sheet copy = shape;
      auto own = std::make_shared<CarriedSheet>(*carry);
      own->contents = withoutLinks(carry->contents);
      copy.extras = std::move(own);
      writeSheetContents(writer, context_.store, copy);
    } else {
      writeSheetContents(writer, context_.store, shape);
    }
  }
  void picture(XmlWriter& writer, const host::ForeignData& picture) override {
    writeForeign(writer, context_, picture);
  }
  void tail(XmlWriter& writer, const host::Sheet& shape) override {
    if (const CarriedSheet* const carry = carried<CarriedSheet>(shape.extras))
      writer.raw(linksLeadElsewhere(*carry) ? withoutLinks(carry->tail) : carry->tail);
  }
  void uses(host::MasterId master) override { context_.usedMasters.insert(master); }

 private:
  /// True for a shape that was copied from another part: the ids in what it carries mean nothing here.
  bool linksLeadElsewhere(const CarriedSheet& carry) const {
    if (!carry.linksFrom) return false;
    return !context_.carry || context_.carry->package != carry.linksFrom || context_.carry->part != carry.linksFromPart;
  }

  PartContext& context_;
};

std::string_view typeName(host::SheetKind kind) {
  switch (kind) {
    case host::SheetKind::Group:
      return "Group";
    case host::SheetKind::Foreign:
      return "Foreign";
    case host::SheetKind::Guide:
      return "Guide";
    default:
      return "Shape";
  }
}

/// Shape numbers of the master's members that this instance no longer has. Without a word about them they would come
/// back on opening. Members may have been regrouped within the instance, so that all of it is looked at.
std::vector<int> missingMembers(const host::Store& store, const host::Sheet& root) {
  std::vector<int> missing;
  const host::Sheet* const prototype = store.sheet(root.prototype);
  if (!root.master || !prototype || prototype->children.empty()) return missing;
  std::unordered_set<host::SheetId> present;
  std::unordered_set<int> saidDeleted;
  for (const host::SheetId id : store.subtree(root.id)) {
    const host::Sheet& member = *store.sheet(id);
    present.insert(member.prototype);
    if (const CarriedSheet* const carry = carried<CarriedSheet>(member.extras))
      saidDeleted.insert(carry->deletedMasterShapes.begin(), carry->deletedMasterShapes.end());
  }
  for (const host::SheetId id : store.subtree(root.prototype)) {
    const int number = store.sheet(id)->shapeId;
    if (!present.contains(id) && !saidDeleted.contains(number)) missing.push_back(number);
  }
  return missing;
}

std::string_view contentTypeOf(std::string_view extension) {
  static constexpr std::pair<std::string_view, std::string_view> types[] = {
      {"png", "image/png"},   {"jpg", "image/jpeg"},   {"jpeg", "image/jpeg"}, {"gif", "image/gif"},
      {"bmp", "image/bmp"},   {"tif", "image/tiff"},   {"tiff", "image/tiff"}, {"emf", "image/x-emf"},
      {"wmf", "image/x-wmf"}, {"svg", "image/svg+xml"}};
  const auto found = std::ranges::find(types, extension, &std::pair<std::string_view, std::string_view>::first);
  return found == std::end(types) ? "application/octet-stream" : found->second;
}

}  // namespace

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

const PictureParts::Part& PictureParts::partOf(const host::ForeignData& picture) {
  if (const auto known = known_.find(&picture); known != known_.end()) return *known->second;
  const CarriedForeign* const carry = carried<CarriedForeign>(picture.extras);
  const std::string oldName = carry ? carry->part : std::string();
  const auto [place, isNew] = parts_.try_emplace(oldName + "\n" + picture.extension + "\n" + picture.bytes);
  Part& part = place->second;
  if (isNew) {
    part.picture = &picture;
    part.contentType =
        carry && !carry->contentType.empty() ? std::string_view(carry->contentType) : contentTypeOf(picture.extension);
    part.name = oldName;
    const std::string extension = picture.extension.empty() ? "bin" : picture.extension;
    while (part.name.empty() || !taken_.insert(partKey(part.name)).second)
      part.name = "/visio/media/image" + std::to_string(next_++) + "." + extension;
    order_.push_back(&part);
  }
  known_.emplace(&picture, &part);
  return part;
}

std::vector<const PictureParts::Part*> PictureParts::all() const { return order_; }

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
  if (const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras)) writeAttributes(writer, carry->attributes);
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

void writeShape(XmlWriter& writer, const host::Store& store, host::SheetId id, ShapeDialect& dialect) {
  const host::Sheet& shape = *store.sheet(id);
  const CarriedSheet* const carry = carried<CarriedSheet>(shape.extras);
  writer.start("Shape").attribute("ID", shape.shapeId);
  dialect.names(writer, shape);
  // A member that left its instance has no master any more that would tell its kind.
  const bool onlyTypeTells = !shape.prototype && shape.kind != host::SheetKind::Shape;
  if (!carry || !carry->lacksType || onlyTypeTells) writer.attribute("Type", typeName(shape.kind));
  if (const host::Master* const master = store.master(shape.master)) {
    writer.attribute("Master", master->fileId);
    dialect.uses(master->id);
  }
  const host::Sheet* const prototype = store.sheet(shape.prototype);
  if (prototype && (!shape.master || store.page(prototype->page)->master != shape.master))
    writer.attribute("MasterShape", prototype->shapeId);
  dialect.attributes(writer, shape);
  dialect.contents(writer, shape);

  writeText(writer, store, shape, carry);
  const std::string* const data[] = {&shape.data1, &shape.data2, &shape.data3};
  for (int i = 0; i < 3; ++i) {
    if (data[i]->empty() && !(carry && (carry->emptyData >> i & 1))) continue;
    writer.start("Data" + std::to_string(i + 1)).text(*data[i]).end();
  }
  if (shape.foreign) dialect.picture(writer, *shape.foreign);
  dialect.tail(writer, shape);

  const std::vector<int> missing = missingMembers(store, shape);
  const std::string_view deleted = carry ? std::string_view(carry->deletedMembers) : std::string_view();
  const auto isWritten = [&](host::SheetId member) { return !dialect.leftOut || !dialect.leftOut->contains(member); };
  if (std::ranges::any_of(shape.children, isWritten) || !missing.empty() || !deleted.empty()) {
    writer.start("Shapes");
    for (const host::SheetId member : shape.children) {
      if (isWritten(member)) writeShape(writer, store, member, dialect);
    }
    writer.raw(deleted);
    for (const int number : missing) {
      // A deleted member has no number of its own; files say so by the largest one.
      writer.start("Shape").attribute("ID", 4294967295L);
      writer.attribute("Del", "1").attribute("MasterShape", number).end();
    }
    writer.end();
  }
  dialect.end(writer);
}

void writeShape(XmlWriter& writer, PartContext& context, host::SheetId shape) {
  PackageDialect dialect(context);
  dialect.leftOut = &context.leftOut;
  writeShape(writer, context.store, shape, dialect);
}

}  // namespace quorvel::formats
