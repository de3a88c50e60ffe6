#include "formats/normal_form.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "base/text.h"
#include "formats/package/content_types.h"
#include "formats/package/part_name.h"
#include "formats/package/relationships.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"
#include "formats/package/zip_package.h"

namespace quorvel::formats {
namespace {

class Normalizer {
 public:
  Normalizer(const Relationships& relationships, const NormalFormOptions& options, bool isSingleFile = false)
      : relationships_(relationships), options_(options), isSingleFile_(isSingleFile) {}

  std::string part(pugi::xml_node root) { return element(root, 1); }

 private:
  bool isLeftOut(pugi::xml_node node) const {
    const std::string_view name = localName(node);
    // An empty list says as much as none.
    if ((name == "Shapes" || name == "Connects" || name == "PageSheet") && !node.first_child() &&
        !node.first_attribute())
      return true;
    if (isSingleFile_ && isInSheet(node) && !node.first_child() && !node.first_attribute()) return true;
    if (!options_.withoutTimes) return false;
    if (isSingleFile_ && (name == "TimeSaved" || name == "TimeEdited")) return true;
    return name == "modified" ||
           (name == "property" && std::string_view(node.attribute("name").value()) == "TimeEdited");
  }

  static bool isSheet(pugi::xml_node node) {
    const std::string_view name = localName(node);
    return name == "Shape" || name == "PageSheet" || name == "StyleSheet" || name == "DocumentSheet";
  }
  /// One of the elements that group cells.
  static bool isInSheet(pugi::xml_node node) {
    static constexpr std::string_view others[] = {"Text", "Shapes", "ForeignData", "Data1", "Data2", "Data3"};
    return isSheet(node.parent()) && std::ranges::find(others, localName(node)) == std::end(others);
  }
  static bool isBase64(pugi::xml_node node) {
    static constexpr std::string_view names[] = {"ForeignData", "Icon", "PreviewPicture", "VBProjectData",
                                                 "EmailRoutingData"};
    return std::ranges::find(names, localName(node)) != std::end(names);
  }
  bool isCell(pugi::xml_node parent, pugi::xml_node child) const {
    const std::string_view name = localName(child);
    return name == "Cell" || name == "Trigger" || (isSingleFile_ && isInSheet(parent) && !child.attribute("IX"));
  }

  std::string element(pugi::xml_node node, int depth) {
    const std::string indent(static_cast<std::size_t>(depth), ' ');
    std::string text = indent + node.name();
    std::map<std::string, std::string> attributes;
    for (const pugi::xml_attribute attribute : node.attributes()) {
      const std::string_view called = attribute.name();
      if (called.starts_with("xmlns")) continue;  // declarations say nothing of their own
      // The mark that the file was not changed since its program wrote it; layout of the text.
      if (isSingleFile_ && depth == 1 && (called == "key" || called == "start" || called == "xml:space")) continue;
      std::string value = attribute.value();
      if (std::string_view(attribute.name()) == "r:id") {
        const Relationship* const found = relationships_.withId(value);
        value = found ? (found->external ? found->target : found->part) : "nowhere";
      }
      attributes[attribute.name()] = std::move(value);
    }
    for (const auto& [name, value] : attributes) {
      text.append(" ").append(name).append("=\"");
      appendEscaped(text, value, true);
      text += '"';
    }
    text += '\n';

    // Only text among elements keeps its place: the order of cells means nothing, that of everything else is kept.
    const bool mixed = localName(node) == "Text";
    std::vector<std::string> cells, others;
    std::vector<std::pair<std::string_view, std::string>> named;
    const bool byName = isSingleFile_ && (isSheet(node) || localName(node) == "DocumentProperties");
    for (const pugi::xml_node child : node) {
      if (child.type() == pugi::node_element) {
        if (isLeftOut(child)) continue;
        if (byName) {
          named.emplace_back(child.name(), element(child, depth + 1));
        } else {
          (isCell(node, child) ? cells : others).push_back(element(child, depth + 1));
        }
      } else if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
        std::string value = child.value();
        if (isSingleFile_ && isBase64(node))
          std::erase_if(value, [](char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; });
        if (!mixed && trimmed(value).empty()) continue;
        std::string line = indent + " ";
        appendEscaped(line, value, true);
        others.push_back(line + "\n");
      }
    }
    std::ranges::sort(cells);
    if (!mixed) sortSections(others);
    std::ranges::stable_sort(named, {}, &std::pair<std::string_view, std::string>::first);
    for (const auto& [name, one] : named) text += one;
    for (const std::string& one : cells) text += one;
    for (const std::string& one : others) text += one;
    return text;
  }

  /// Sections of a sheet have no order either; the sheet's other elements follow.
  static void sortSections(std::vector<std::string>& elements) {
    const auto isSection = [](const std::string& one) { return trimmed(one).starts_with("Section "); };
    const auto end = std::stable_partition(elements.begin(), elements.end(), isSection);
    std::sort(elements.begin(), end);
  }

  const Relationships& relationships_;
  const NormalFormOptions& options_;
  const bool isSingleFile_;
};

std::string checksum(const std::string& bytes) {
  std::uint64_t hash = 0xcbf29ce484222325ull;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ull;
  return std::to_string(hash);
}

Maybe<std::string> normalFormOfSingleFile(const std::string& fileName, const NormalFormOptions& options) {
  std::ifstream file(fileName, std::ios::binary);
  std::stringstream text;
  text << file.rdbuf();
  std::string bytes = std::move(text).str();
  pugi::xml_document document;
  if (!file || !parseXml(document, bytes).empty()) return {};
  return "part /\n" + Normalizer(Relationships(), options, true).part(document.document_element());
}

}  // namespace

Maybe<std::string> normalForm(const std::string& fileName, const NormalFormOptions& options) {
  ZipPackage package;
  if (!package.open(fileName).empty()) return normalFormOfSingleFile(fileName, options);
  ContentTypes types;
  std::string bytes;
  if (!package.read("/[Content_Types].xml", bytes) || !types.parse(bytes).empty()) return {};

  std::map<std::string, std::string> parts;
  const auto relationshipsOf = [&](const std::string& source, Relationships& relationships) {
    std::string xml;
    if (package.read(relationshipsPartOf(source), xml)) relationships.parse(source, xml);
  };
  const auto listed = [](const Relationships& relationships) {
    std::vector<std::string> lines;
    for (const Relationship& one : relationships.all())
      lines.push_back(" -> " + (one.external ? one.target : one.part) + " (" + one.type + ")\n");
    std::ranges::sort(lines);
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
  };
  Relationships root;
  relationshipsOf("/", root);
  parts["/"] = listed(root);
  for (const std::string& name : package.names()) {
    if (name == "/[Content_Types].xml" || extensionOf(name) == "rels") continue;
    if (!package.read(name, bytes)) return {};
    Relationships relationships;
    relationshipsOf(name, relationships);
    std::string text = "type " + types.typeOf(name) + "\n" + listed(relationships);
    const std::string copy = bytes;
    pugi::xml_document document;
    if (parseXml(document, bytes).empty()) {
      text += Normalizer(relationships, options).part(document.document_element());
    } else {
      text += " " + std::to_string(copy.size()) + " bytes, checksum " + checksum(copy) + "\n";
    }
    parts[name] = std::move(text);
  }
  std::string result;
  for (const auto& [name, text] : parts) result.append("part ").append(name).append("\n").append(text);
  return result;
}

std::string firstDifference(const std::string& before, const std::string& after) {
  const auto a = splitAt(before, '\n'), b = splitAt(after, '\n');
  std::string_view part;
  for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
    const std::string_view left = i < a.size() ? a[i] : "(end)", right = i < b.size() ? b[i] : "(end)";
    if (left.starts_with("part ")) part = left;
    if (left != right)
      return std::string(part) + "\nbefore: " + std::string(left) + "\nafter:  " + std::string(right) + "\n";
  }
  return {};
}

}  // namespace quorvel::formats
