#include "formats/vsdx/part_shapes.h"

#include <algorithm>

#include "formats/common/names.h"
#include "formats/common/shape_writer.h"
#include "formats/common/sheet_writer.h"
#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {
namespace {

void writeForeign(XmlWriter& writer, PartContext& context, const host::ForeignData& picture) {
  const CarriedForeign* const carry = carried<CarriedForeign>(picture.extras);
  const ImageParts::Part& part = context.pictures.partOf(picture);
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

std::string_view contentTypeOf(std::string_view extension) {
  static constexpr std::pair<std::string_view, std::string_view> types[] = {
      {"png", "image/png"},   {"jpg", "image/jpeg"},   {"jpeg", "image/jpeg"}, {"gif", "image/gif"},
      {"bmp", "image/bmp"},   {"tif", "image/tiff"},   {"tiff", "image/tiff"}, {"emf", "image/x-emf"},
      {"wmf", "image/x-wmf"}, {"svg", "image/svg+xml"}};
  const auto found = std::ranges::find(types, extension, &std::pair<std::string_view, std::string_view>::first);
  return found == std::end(types) ? "application/octet-stream" : found->second;
}

}  // namespace

const ImageParts::Part& ImageParts::partOf(const host::ForeignData& picture) {
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

std::vector<const ImageParts::Part*> ImageParts::all() const { return order_; }

void writeShape(XmlWriter& writer, PartContext& context, host::SheetId shape) {
  PackageDialect dialect(context);
  dialect.leftOut = &context.leftOut;
  writeShape(writer, context.store, shape, dialect);
}

}  // namespace quorvel::formats
