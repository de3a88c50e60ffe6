#include "formats/vdx/package_parts.h"

#include <algorithm>

#include "formats/package/part_name.h"
#include "formats/vdx/picture_bytes.h"

namespace quorvel::formats::vdx {
namespace {

constexpr std::string_view folder = "/visio/";

/// The document's own parts are made anew from the engine's data and must not meet others of their names.
bool mayBear(std::string_view name) {
  static constexpr std::string_view taken[] = {"/visio/document", "/visio/masters", "/visio/pages", "/visio/media"};
  const auto isPlain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-' ||
           c == '_' || c == '/';
  };
  return name.starts_with(folder) && !name.ends_with('/') && !name.ends_with(".rels") &&
         std::ranges::all_of(name, isPlain) && name.find("..") == std::string_view::npos &&
         name.find("//") == std::string_view::npos && std::ranges::none_of(taken, [&](std::string_view start) {
           return std::string_view(partKey(name)).starts_with(start);
         });
}

bool mayBeKept(std::string_view contentType) {
  return contentType.find("vbaProject") == std::string_view::npos &&
         contentType.find("digital-signature") == std::string_view::npos;
}

}  // namespace

void writePackageParts(XmlWriter& writer, const CarriedPackage& package) {
  for (const CarriedPart& part : package.parts) {
    if (!mayBear(part.name) || !mayBeKept(part.contentType)) continue;
    const auto& all = package.document.all();
    const auto lead = std::ranges::find_if(
        all, [&](const Relationship& one) { return !one.external && partKey(one.part) == partKey(part.name); });
    if (lead == all.end()) continue;
    writer.start("Part").attribute("Name", part.name).attribute("ContentType", part.contentType);
    writer.attribute("RelationshipType", lead->type).raw(toBase64(part.bytes)).end();
  }
}

bool readPackagePart(CarriedDocument& document, pugi::xml_node node) {
  if (localName(node) != "Part") return false;
  CarriedPart part{node.attribute("Name").value(), node.attribute("ContentType").value(), {}};
  const Maybe<std::string> bytes = fromBase64(innerText(node));
  if (!bytes || !mayBear(part.name) || !mayBeKept(part.contentType)) return false;
  // Nobody else holds the package while its drawing is read.
  auto package =
      document.package ? std::const_pointer_cast<CarriedPackage>(document.package) : std::make_shared<CarriedPackage>();
  const auto sameName = [&](const CarriedPart& one) { return partKey(one.name) == partKey(part.name); };
  if (std::ranges::any_of(package->parts, sameName)) return false;
  package->documentPart = "/visio/document.xml";
  package->document.idFor(package->documentPart, node.attribute("RelationshipType").value(), part.name);
  part.bytes = *bytes;
  package->parts.push_back(std::move(part));
  document.package = std::move(package);
  return true;
}

}  // namespace quorvel::formats::vdx
