#include "formats/package/content_types.h"

#include <algorithm>

#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"

namespace quorvel::formats {

std::string ContentTypes::parse(std::string& xml) {
  pugi::xml_document document;
  if (std::string wrong = parseXml(document, xml); !wrong.empty()) return wrong;
  for (const pugi::xml_node node : document.document_element()) {
    const std::string_view type = node.attribute("ContentType").value();
    if (localName(node) == "Default") addDefault(node.attribute("Extension").value(), type);
    if (localName(node) != "Override") continue;
    const std::string name = node.attribute("PartName").value();
    if (places_.try_emplace(partKey(name), parts_.size()).second) parts_.emplace_back(name, type);
  }
  return {};
}

std::string ContentTypes::typeOf(std::string_view part) const {
  if (const auto found = places_.find(partKey(part)); found != places_.end()) return parts_[found->second].second;
  const auto byExtension = std::ranges::find(defaults_, extensionOf(part), &std::pair<std::string, std::string>::first);
  return byExtension == defaults_.end() ? std::string() : byExtension->second;
}

void ContentTypes::set(std::string_view part, std::string_view type) {
  if (type.empty() || typeOf(part) == type) return;
  const auto [place, isNew] = places_.try_emplace(partKey(part), parts_.size());
  if (isNew) {
    parts_.emplace_back(part, type);
  } else {
    parts_[place->second].second = type;
  }
}

void ContentTypes::addDefault(std::string_view extension, std::string_view type) {
  const std::string key = partKey(extension);
  if (key.empty() || type.empty()) return;
  if (std::ranges::find(defaults_, key, &std::pair<std::string, std::string>::first) != defaults_.end()) return;
  defaults_.emplace_back(key, type);
}

ContentTypes ContentTypes::defaultsOnly() const {
  ContentTypes result;
  result.defaults_ = defaults_;
  return result;
}

std::string ContentTypes::xml() const {
  XmlWriter writer;
  writer.raw(xmlDeclaration).start("Types");
  writer.attribute("xmlns", "http://schemas.openxmlformats.org/package/2006/content-types");
  for (const auto& [extension, type] : defaults_)
    writer.start("Default").attribute("Extension", extension).attribute("ContentType", type).end();
  for (const auto& [part, type] : parts_)
    writer.start("Override").attribute("PartName", part).attribute("ContentType", type).end();
  return writer.end().take();
}

}  // namespace quorvel::formats
