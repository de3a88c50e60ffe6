#include "formats/package/relationships.h"

#include <algorithm>

#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"

namespace quorvel::formats {

std::string Relationships::parse(std::string_view source, std::string& xml) {
  pugi::xml_document document;
  if (std::string wrong = parseXml(document, xml); !wrong.empty()) return wrong;
  for (const pugi::xml_node node : document.document_element()) {
    if (localName(node) != "Relationship") continue;
    Relationship read;
    read.id = node.attribute("Id").value();
    read.type = node.attribute("Type").value();
    read.target = node.attribute("Target").value();
    read.external = std::string_view(node.attribute("TargetMode").value()) == "External";
    if (!read.external) read.part = resolveTarget(source, read.target);
    if (!read.id.empty() && !withId(read.id)) all_.push_back(std::move(read));
  }
  return {};
}

const Relationship* Relationships::withId(std::string_view id) const {
  const auto found = std::ranges::find(all_, id, &Relationship::id);
  return found == all_.end() ? nullptr : &*found;
}

const Relationship* Relationships::ofType(std::string_view typeEnd) const {
  const auto found = std::ranges::find_if(
      all_, [&](const Relationship& one) { return one.type.ends_with(typeEnd) && !one.part.empty(); });
  return found == all_.end() ? nullptr : &*found;
}

std::string Relationships::idFor(std::string_view source, std::string_view type, std::string_view part) {
  const std::string key = partKey(part);
  for (const Relationship& one : all_) {
    if (one.type == type && partKey(one.part) == key) return one.id;
  }
  std::size_t number = all_.size() + 1;
  while (withId("rId" + std::to_string(number)) || reserved_.contains("rId" + std::to_string(number))) ++number;
  all_.push_back({"rId" + std::to_string(number), std::string(type), relativeTarget(source, part), std::string(part)});
  return all_.back().id;
}

void Relationships::keepOnly(const std::function<bool(const Relationship&)>& kept) {
  std::erase_if(all_, [&](const Relationship& one) { return !kept(one); });
}

std::vector<std::string> usedIds(std::string_view xml) {
  static constexpr std::string_view start = " r:id=\"";
  std::vector<std::string> ids;
  for (std::size_t at = xml.find(start); at != std::string_view::npos; at = xml.find(start, at)) {
    at += start.size();
    const std::size_t end = xml.find('"', at);
    if (end == std::string_view::npos) break;
    ids.emplace_back(xml.substr(at, end - at));
  }
  return ids;
}

std::string Relationships::xml() const {
  XmlWriter writer;
  writer.raw(xmlDeclaration).start("Relationships");
  writer.attribute("xmlns", "http://schemas.openxmlformats.org/package/2006/relationships");
  for (const Relationship& one : all_) {
    writer.start("Relationship").attribute("Id", one.id).attribute("Type", one.type).attribute("Target", one.target);
    if (one.external) writer.attribute("TargetMode", "External");
    writer.end();
  }
  return writer.end().take();
}

}  // namespace quorvel::formats
