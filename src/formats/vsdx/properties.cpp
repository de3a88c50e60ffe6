#include "formats/vsdx/properties.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "formats/common/carried.h"
#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {
namespace {

using Text = std::string host::DocumentProperties::*;

struct Property {
  std::string_view element;  ///< with the usual prefix, for making it
  Text text;
  bool isTime = false;
};

constexpr Property coreProperties[] = {
    {"dc:title", &host::DocumentProperties::title},
    {"dc:subject", &host::DocumentProperties::subject},
    {"dc:creator", &host::DocumentProperties::creator},
    {"cp:keywords", &host::DocumentProperties::keywords},
    {"dc:description", &host::DocumentProperties::description},
    {"cp:lastPrinted", &host::DocumentProperties::timePrinted},
    {"dcterms:created", &host::DocumentProperties::timeCreated, true},
    {"dcterms:modified", &host::DocumentProperties::timeSaved, true},
    {"cp:category", &host::DocumentProperties::category},
};

constexpr Property applicationProperties[] = {
    {"Manager", &host::DocumentProperties::manager},
    {"Company", &host::DocumentProperties::company},
    {"HyperlinkBase", &host::DocumentProperties::hyperlinkBase},
};

constexpr std::string_view timeEditedName = "TimeEdited";

constexpr const char* newCore =
    R"(<cp:coreProperties xmlns:cp="http://schemas.openxmlformats.org/package/2006/metadata/core-properties" )"
    R"(xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:dcterms="http://purl.org/dc/terms/" )"
    R"(xmlns:dcmitype="http://purl.org/dc/dcmitype/" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"/>)";
constexpr const char* newApplication =
    R"(<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/extended-properties" )"
    R"(xmlns:vt="http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes">)"
    R"(<Application>Quorvel</Application></Properties>)";
constexpr const char* newCustom =
    R"(<Properties xmlns="http://schemas.openxmlformats.org/officeDocument/2006/custom-properties" )"
    R"(xmlns:vt="http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes"/>)";

/// What a custom property's element says of its value; empty for text.
std::string_view kindOfElement(std::string_view element) {
  static constexpr std::string_view numbers[] = {"i1",  "i2",  "i4",  "i8",   "int", "r4",     "r8",
                                                 "ui1", "ui2", "ui4", "uint", "ui8", "decimal"};
  if (element == "bool") return "Boolean";
  if (element == "filetime" || element == "date") return "Date";
  return std::ranges::find(numbers, element) != std::end(numbers) ? "Number" : "";
}

/// The element for a value of that kind; text when the value is none.
std::string elementForKind(std::string_view kind, std::string_view text) {
  const bool isTruth = text == "0" || text == "1" || text == "true" || text == "false";
  if (kind == "Boolean" && isTruth) return "bool";
  if (kind == "Date" && text.size() >= 19 && text[10] == 'T') return "filetime";
  if (kind == "Number") {
    if (wholeNumber(text, 0) == wholeNumber(text, 1)) return "i4";
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc() && end == text.data() + text.size() && std::isfinite(number)) return "r8";
  }
  return "lpwstr";
}

struct StringSink : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override { text.append(static_cast<const char*>(data), size); }
};

std::string printed(const pugi::xml_document& document) {
  StringSink sink;
  sink.text = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
  document.document_element().print(sink, "", pugi::format_raw | pugi::format_no_declaration);
  return std::move(sink.text);
}

void setText(pugi::xml_node node, std::string text) {
  std::erase_if(text,
                [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r'; });
  node.remove_children();
  if (!text.empty()) node.append_child(pugi::node_pcdata).set_value(text.c_str());
}

/// The prefix in front of a name that this part uses for what we call `usual`; declared when it is missing.
std::string prefixFor(pugi::xml_node root, std::string_view usual) {
  static constexpr std::pair<std::string_view, std::string_view> namespaces[] = {
      {"cp", "http://schemas.openxmlformats.org/package/2006/metadata/core-properties"},
      {"dc", "http://purl.org/dc/elements/1.1/"},
      {"dcterms", "http://purl.org/dc/terms/"},
      {"xsi", "http://www.w3.org/2001/XMLSchema-instance"},
      {"vt", "http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes"},
  };
  const auto known = std::ranges::find(namespaces, usual, &std::pair<std::string_view, std::string_view>::first);
  for (const pugi::xml_attribute attribute : root.attributes()) {
    const std::string_view name = attribute.name();
    if (attribute.value() != known->second) continue;
    if (name == "xmlns") return {};
    if (name.starts_with("xmlns:")) return std::string(name.substr(6)) + ":";
  }
  root.append_attribute(("xmlns:" + std::string(usual)).c_str()) = std::string(known->second).c_str();
  return std::string(usual) + ":";
}

/// Times have their type here; single files, whose schema lacks it, have them without.
void tellTimeType(pugi::xml_node root, pugi::xml_node node) {
  if (attributeNamed(node, "type")) return;
  const std::string type = prefixFor(root, "xsi") + "type";
  node.append_attribute(type.c_str()) = (prefixFor(root, "dcterms") + "W3CDTF").c_str();
}

void putProperty(pugi::xml_node root, const Property& property, const std::string& text) {
  const std::string plain(property.element.substr(property.element.find(':') + 1));
  if (const pugi::xml_node node = childNamed(root, plain)) {
    if (innerText(node) != text) setText(node, text);
    if (property.isTime && !text.empty()) tellTimeType(root, node);
    return;
  }
  if (text.empty()) return;
  const std::size_t colon = property.element.find(':');
  const std::string prefix = colon == std::string_view::npos ? "" : prefixFor(root, property.element.substr(0, colon));
  pugi::xml_node node = root.append_child((prefix + plain).c_str());
  if (property.isTime) tellTimeType(root, node);
  setText(node, text);
}

template <class Table>
std::string readTable(std::string& xml, const Table& table, host::DocumentProperties& properties,
                      pugi::xml_document& document) {
  if (std::string wrong = parseXml(document, xml); !wrong.empty()) return wrong;
  for (const Property& property : table) {
    const std::string_view name = property.element.substr(property.element.find(':') + 1);
    properties.*property.text = innerText(childNamed(document.document_element(), name));
  }
  return {};
}

/// The part to change: what was read, or a new one.
bool load(pugi::xml_document& document, std::string& xml, const char* fresh) {
  if (xml.empty()) xml = fresh;
  return parseXml(document, xml).empty();
}

/// Names of pages and masters as the part lists them.
void putTitles(pugi::xml_node root, const host::Store& store, const host::Document& document) {
  std::vector<std::string> titles;
  for (const host::PageId page : document.pages) titles.push_back(store.page(page)->name);
  for (const host::MasterId id : document.masters) {
    const host::Master& master = *store.master(id);
    titles.push_back(master.name.empty() ? "Master." + std::to_string(master.fileId) : master.name);
  }

  std::vector<std::string> there;
  for (const pugi::xml_node entry : childNamed(childNamed(root, "TitlesOfParts"), "vector")) {
    if (entry.type() == pugi::node_element) there.push_back(innerText(entry));
  }
  // Masters may be listed in another order than theirs; that is no reason to rewrite the list.
  if (std::ranges::is_permutation(titles, there)) return;

  // Headings stay in the language of the program that wrote them.
  std::vector<std::string> headings;
  for (const pugi::xml_node entry : childNamed(childNamed(root, "HeadingPairs"), "vector")) {
    if (const pugi::xml_node heading = childNamed(entry, "lpstr")) headings.push_back(innerText(heading));
  }
  const auto heading = [&](std::size_t place, const char* usual) {
    return place < headings.size() ? headings[place].c_str() : usual;
  };
  const std::string vt = prefixFor(root, "vt");
  for (const char* const name : {"HeadingPairs", "TitlesOfParts"}) {
    if (const pugi::xml_node old = childNamed(root, name)) root.remove_child(old);
  }
  pugi::xml_node pairs = root.append_child("HeadingPairs").append_child((vt + "vector").c_str());
  pairs.append_attribute("size") = 4;
  pairs.append_attribute("baseType") = "variant";
  const auto addPair = [&](const char* name, std::size_t count) {
    pairs.append_child((vt + "variant").c_str()).append_child((vt + "lpstr").c_str()).text().set(name);
    pairs.append_child((vt + "variant").c_str())
        .append_child((vt + "i4").c_str())
        .text()
        .set(static_cast<unsigned>(count));
  };
  addPair(heading(0, "Pages"), document.pages.size());
  addPair(heading(1, "Masters"), document.masters.size());
  pugi::xml_node list = root.append_child("TitlesOfParts").append_child((vt + "vector").c_str());
  list.append_attribute("size") = static_cast<unsigned>(titles.size());
  list.append_attribute("baseType") = "lpstr";
  for (const std::string& title : titles) setText(list.append_child((vt + "lpstr").c_str()), title);
}

}  // namespace

std::string readCoreProperties(std::string xml, host::DocumentProperties& properties) {
  pugi::xml_document document;
  return readTable(xml, coreProperties, properties, document);
}

std::string readApplicationProperties(std::string xml, host::DocumentProperties& properties) {
  pugi::xml_document document;
  if (std::string wrong = readTable(xml, applicationProperties, properties, document); !wrong.empty()) return wrong;
  properties.templateName = lastStep(innerText(childNamed(document.document_element(), "Template")));
  return {};
}

std::string readCustomProperties(std::string xml, host::DocumentProperties& properties) {
  pugi::xml_document document;
  if (std::string wrong = parseXml(document, xml); !wrong.empty()) return wrong;
  for (const pugi::xml_node node : document.document_element()) {
    const char* const name = attributeNamed(node, "name");
    if (localName(node) != "property" || !name) continue;
    std::string text;
    std::string_view kind;
    for (const pugi::xml_node value : node) {
      if (value.type() != pugi::node_element) continue;
      text = innerText(value);
      kind = kindOfElement(localName(value));
    }
    if (name == timeEditedName) {
      properties.timeEdited = std::move(text);
    } else {
      properties.custom[name] = std::move(text);
      if (!kind.empty()) properties.customKinds[name] = kind;
    }
  }
  return {};
}

std::string writeCoreProperties(const std::string& before, const host::DocumentProperties& properties) {
  std::string xml = before;
  pugi::xml_document document;
  if (!load(document, xml, newCore)) return before;
  for (const Property& property : coreProperties)
    putProperty(document.document_element(), property, properties.*property.text);
  return before.empty() && !document.document_element().first_child() ? std::string() : printed(document);
}

std::string writeApplicationProperties(const std::string& before, const host::Store& store,
                                       const host::Document& drawing) {
  const host::DocumentProperties& properties = drawing.properties;
  // A package without the part stays without it as long as it would be empty.
  const CarriedDocument* const carry = carried<CarriedDocument>(drawing.extras);
  const bool fromPackage = carry && !carry->documentAttributes.empty();
  if (fromPackage && before.empty() && properties.templateName.empty() && properties.manager.empty() &&
      properties.company.empty() && properties.hyperlinkBase.empty())
    return {};
  std::string xml = before;
  pugi::xml_document document;
  if (!load(document, xml, newApplication)) return before;
  const pugi::xml_node root = document.document_element();
  // The folder of the template is not known to the engine and stays as it was while the name does.
  if (lastStep(innerText(childNamed(root, "Template"))) != drawing.properties.templateName)
    putProperty(root, {"Template", nullptr}, drawing.properties.templateName);
  for (const Property& property : applicationProperties) putProperty(root, property, drawing.properties.*property.text);
  putTitles(root, store, drawing);
  return printed(document);
}

std::string writeCustomProperties(const std::string& before, const host::DocumentProperties& properties) {
  std::string xml = before;
  pugi::xml_document document;
  if (!load(document, xml, newCustom)) return before;
  pugi::xml_node root = document.document_element();
  std::map<std::string, std::string> wanted = properties.custom;
  if (!properties.timeEdited.empty()) wanted[std::string(timeEditedName)] = properties.timeEdited;

  int largestId = 1;
  for (pugi::xml_node node = root.first_child(); node;) {
    const pugi::xml_node here = node;
    node = node.next_sibling();
    const char* const name = attributeNamed(here, "name");
    if (!name) continue;
    largestId = std::max(largestId, wholeNumber(here.attribute("pid").value(), 1));
    const auto found = wanted.find(name);
    if (found == wanted.end()) {
      root.remove_child(here);
      continue;
    }
    for (const pugi::xml_node value : here) {
      if (value.type() == pugi::node_element && innerText(value) != found->second) setText(value, found->second);
    }
    wanted.erase(found);
  }
  if (wanted.empty() && before.empty()) return {};
  const std::string vt = wanted.empty() ? "" : prefixFor(root, "vt");
  for (const auto& [name, text] : wanted) {
    pugi::xml_node node = root.append_child("property");
    node.append_attribute("fmtid") = "{D5CDD505-2E9C-101B-9397-08002B2CF9AE}";
    node.append_attribute("pid") = ++largestId;
    node.append_attribute("name") = name.c_str();
    const auto kind = properties.customKinds.find(name);
    const std::string element = name == timeEditedName                 ? "filetime"
                                : kind == properties.customKinds.end() ? "lpwstr"
                                                                       : elementForKind(kind->second, text);
    setText(node.append_child((vt + element).c_str()), text);
  }
  return printed(document);
}

}  // namespace quorvel::formats
