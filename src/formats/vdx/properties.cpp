#include "formats/vdx/properties.h"

#include <algorithm>

#include "formats/package/part_name.h"

namespace quorvel::formats::vdx {
namespace {

enum class Kind { Text, Time, Template, Link };

struct Property {
  const char* element;
  std::string host::DocumentProperties::*text;
  Kind kind = Kind::Text;
};

constexpr Property table[] = {
    {"Title", &host::DocumentProperties::title},
    {"Subject", &host::DocumentProperties::subject},
    {"Creator", &host::DocumentProperties::creator},
    {"Manager", &host::DocumentProperties::manager},
    {"Company", &host::DocumentProperties::company},
    {"Category", &host::DocumentProperties::category},
    {"Keywords", &host::DocumentProperties::keywords},
    {"Desc", &host::DocumentProperties::description},
    {"HyperlinkBase", &host::DocumentProperties::hyperlinkBase, Kind::Link},
    {"Template", &host::DocumentProperties::templateName, Kind::Template},
    {"TimeCreated", &host::DocumentProperties::timeCreated, Kind::Time},
    {"TimeSaved", &host::DocumentProperties::timeSaved, Kind::Time},
    {"TimeEdited", &host::DocumentProperties::timeEdited, Kind::Time},
    {"TimePrinted", &host::DocumentProperties::timePrinted, Kind::Time},
};

/// Elements for what packages have as custom properties.
struct NamedProperty {
  const char* element;
  const char* name;
  bool isNumber;
};
constexpr NamedProperty namedProperties[] = {
    {"BuildNumberCreated", "BuildNumberCreated", true},
    {"BuildNumberEdited", "BuildNumberEdited", true},
    {"AlternateNames", "_VPID_ALTERNATENAMES", false},
};

std::string lastStepOf(std::string_view path) { return std::string(path.substr(path.find_last_of("/\\") + 1)); }

std::string textOf(pugi::xml_node node, Kind kind) {
  if (!node) return {};
  if (kind == Kind::Link && node.attribute("href")) return node.attribute("href").value();
  std::string text = innerText(node);
  if (kind == Kind::Template) return lastStepOf(text);
  // These times have no zone; they are taken to be in the zone that all times of a drawing are kept in.
  if (kind == Kind::Time && !text.empty() && text.find_first_of("Z+") == std::string::npos) text += 'Z';
  return text;
}

void setText(pugi::xml_node node, std::string text) {
  std::erase_if(text,
                [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r'; });
  node.remove_children();
  if (!text.empty()) node.append_child(pugi::node_pcdata).set_value(text.c_str());
}

bool isTime(std::string_view text) {
  return text.size() >= 19 && text[4] == '-' && text[7] == '-' && text[10] == 'T' && text[13] == ':';
}

void put(pugi::xml_node root, const Property& property, const std::string& text) {
  pugi::xml_node node = childNamed(root, property.element);
  if (textOf(node, property.kind) == text) return;
  if (property.kind == Kind::Time && !isTime(text)) {
    if (node) root.remove_child(node);
    return;
  }
  if (!node) node = root.append_child(property.element);
  if (property.kind == Kind::Link) {
    if (!node.attribute("href")) node.append_attribute("href");
    node.attribute("href") = text.c_str();
    return;
  }
  setText(node, property.kind == Kind::Time && text.ends_with('Z') ? text.substr(0, text.size() - 1) : text);
}

/// Writes those that are elements here and takes them out of the list.
void putNamed(pugi::xml_node root, std::map<std::string, std::string>& wanted) {
  for (const NamedProperty& property : namedProperties) {
    pugi::xml_node node = childNamed(root, property.element);
    const auto found = wanted.find(property.name);
    if (found == wanted.end()) {
      if (node) root.remove_child(node);
      continue;
    }
    if (property.isNumber && wholeNumber(found->second, 0) != wholeNumber(found->second, 1)) continue;
    if (!node && (property.isNumber || !found->second.empty())) node = root.append_child(property.element);
    if (node && innerText(node) != found->second) setText(node, found->second);
    if (node) wanted.erase(found);
  }
}

void putCustom(pugi::xml_node root, const host::DocumentProperties& properties) {
  std::map<std::string, std::string> wanted = properties.custom;
  putNamed(root, wanted);
  pugi::xml_node list = childNamed(root, "CustomProps");
  for (pugi::xml_node node = list.first_child(); node;) {
    const pugi::xml_node here = node;
    node = node.next_sibling();
    if (localName(here) != "CustomProp") continue;
    const auto found = wanted.find(here.attribute("Name").value());
    if (found == wanted.end()) {
      list.remove_child(here);
      continue;
    }
    if (innerText(here) != found->second) setText(here, found->second);
    wanted.erase(found);
  }
  if (!wanted.empty() && !list) list = root.append_child("CustomProps");
  for (const auto& [name, text] : wanted) {
    pugi::xml_node node = list.append_child("CustomProp");
    node.append_attribute("Name") = name.c_str();
    const auto kind = properties.customKinds.find(name);
    node.append_attribute("PropType") = kind == properties.customKinds.end() ? "String" : kind->second.c_str();
    setText(node, text);
  }
}

}  // namespace

void readProperties(pugi::xml_node node, host::DocumentProperties& properties) {
  for (const Property& property : table)
    properties.*property.text = textOf(childNamed(node, property.element), property.kind);
  for (const pugi::xml_node custom : childNamed(node, "CustomProps")) {
    if (localName(custom) != "CustomProp") continue;
    const char* const name = custom.attribute("Name").value();
    const std::string_view kind = custom.attribute("PropType").value();
    properties.custom[name] = innerText(custom);
    if (kind == "Number" || kind == "Date" || kind == "Boolean") properties.customKinds[name] = kind;
  }
  for (const NamedProperty& property : namedProperties) {
    const pugi::xml_node element = childNamed(node, property.element);
    if (!element) continue;
    properties.custom[property.name] = innerText(element);
    if (property.isNumber) properties.customKinds[property.name] = "Number";
  }
}

std::string writeProperties(const std::string& before, const host::DocumentProperties& properties) {
  std::string xml = before.empty() ? "<DocumentProperties/>" : before;
  pugi::xml_document document;
  if (!parseXml(document, xml).empty()) return before;
  const pugi::xml_node root = document.document_element();
  for (const Property& property : table) put(root, property, properties.*property.text);
  putCustom(root, properties);
  return before.empty() && !root.first_child() ? std::string() : rawXml(root);
}

}  // namespace quorvel::formats::vdx
