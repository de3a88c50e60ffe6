#include "formats/vdx/package_parts.h"

#include <algorithm>
#include <unordered_map>

#include "formats/package/part_name.h"
#include "formats/vdx/image_bytes.h"

namespace quorvel::formats::vdx {
namespace {

constexpr std::string_view folder = "/visio/";

constexpr std::string_view linksFolder = "/_rels/", linksEnding = ".rels";

/// The part whose relationships a part of that name holds; empty for other names.
std::string sourceOf(std::string_view name) {
  const std::size_t at = name.rfind(linksFolder);
  if (at == std::string_view::npos || !name.ends_with(linksEnding)) return {};
  const std::size_t from = at + linksFolder.size();
  if (name.size() < from + linksEnding.size()) return {};
  return std::string(name.substr(0, at + 1)).append(name.substr(from, name.size() - from - linksEnding.size()));
}

/// The document's own parts are rebuilt from the engine's data and must not collide with others of their names.
bool mayBear(std::string_view name) {
  static constexpr std::string_view taken[] = {"/visio/document", "/visio/masters", "/visio/pages", "/visio/media"};
  if (name.ends_with(linksEnding)) {
    const std::string source = sourceOf(name);
    return !source.ends_with(linksEnding) && mayBear(source);
  }
  const auto isPlain = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-' ||
           c == '_' || c == '/';
  };
  return name.starts_with(folder) && !name.ends_with('/') && std::ranges::all_of(name, isPlain) &&
         name.find("..") == std::string_view::npos && name.find("//") == std::string_view::npos &&
         std::ranges::none_of(
             taken, [&](std::string_view start) { return std::string_view(partKey(name)).starts_with(start); });
}

bool mayBeKept(const CarriedPart& part) { return !isMacros(part) && !isSignature(part); }

}  // namespace

namespace {

/// The parts that are written, and how the document part leads to them.
struct PartsToWrite {
  std::vector<const CarriedPart*> parts;
  std::unordered_map<std::string, std::string> leads;  ///< key to the type of what leads there from the document
};

PartsToWrite partsToWrite(const CarriedPackage& package, const std::unordered_set<std::string>& said) {
  PartsToWrite written;
  std::unordered_map<std::string, const CarriedPart*> byKey;
  for (const CarriedPart& part : package.parts) byKey.emplace(partKey(part.name), &part);
  std::unordered_set<std::string> reached;
  std::vector<const CarriedPart*> waiting;
  const auto reach = [&](const std::string& key) {
    const auto found = byKey.find(key);
    if (found != byKey.end() && reached.insert(key).second) waiting.push_back(found->second);
  };
  for (const Relationship& one : package.document.all()) {
    if (one.external) continue;
    written.leads.emplace(partKey(one.part), one.type);
    reach(partKey(one.part));
  }
  while (!waiting.empty()) {
    const CarriedPart& part = *waiting.back();
    waiting.pop_back();
    const auto links = byKey.find(partKey(relationshipsPartOf(part.name)));
    if (links == byKey.end()) continue;
    reached.insert(links->first);
    Relationships relationships;
    std::string xml = links->second->bytes.unpacked();
    if (!relationships.parse(part.name, xml).empty()) continue;
    for (const Relationship& one : relationships.all()) {
      if (!one.external) reach(partKey(one.part));
    }
  }
  for (const CarriedPart& part : package.parts) {
    const std::string key = partKey(part.name);
    if (reached.contains(key) && !said.contains(key) && mayBear(part.name) && mayBeKept(part))
      written.parts.push_back(&part);
  }
  return written;
}

}  // namespace

void writePackageParts(XmlWriter& writer, const CarriedPackage& package, const std::unordered_set<std::string>& said) {
  const PartsToWrite written = partsToWrite(package, said);
  for (const CarriedPart* const part : written.parts) {
    writer.start("Part").attribute("Name", part->name).attribute("ContentType", part->contentType);
    if (const auto lead = written.leads.find(partKey(part->name)); lead != written.leads.end())
      writer.attribute("RelationshipType", lead->second);
    writer.raw(toBase64(part->bytes.unpacked())).end();
  }
}

void addPartsLeftOut(LeftOut& leftOut, const CarriedPackage& package, const std::unordered_set<std::string>& said) {
  const PartsToWrite written = partsToWrite(package, said);
  for (const CarriedPart& part : package.parts) {
    if (part.name.ends_with(linksEnding) || said.contains(partKey(part.name))) continue;
    if (std::ranges::find(written.parts, &part) == written.parts.end()) addPart(leftOut, package, part);
  }
}

bool readPackagePart(CarriedDocument& document, pugi::xml_node node) {
  if (localName(node) != "Part") return false;
  CarriedPart part{node.attribute("Name").value(), node.attribute("ContentType").value(), {}};
  const Maybe<std::string> bytes = fromBase64(innerText(node));
  if (!bytes || !mayBear(part.name) || !mayBeKept(part)) return false;
  // Nobody else holds the package while its drawing is read.
  auto package =
      document.package ? std::const_pointer_cast<CarriedPackage>(document.package) : std::make_shared<CarriedPackage>();
  const auto sameName = [&](const CarriedPart& one) { return partKey(one.name) == partKey(part.name); };
  if (std::ranges::any_of(package->parts, sameName)) return false;
  package->documentPart = "/visio/document.xml";
  // What depends on another part is found by that part's relationships.
  if (const pugi::xml_attribute lead = node.attribute("RelationshipType"))
    package->document.idFor(package->documentPart, lead.value(), part.name);
  part.bytes = *bytes;
  package->parts.push_back(std::move(part));
  document.package = std::move(package);
  return true;
}

}  // namespace quorvel::formats::vdx
