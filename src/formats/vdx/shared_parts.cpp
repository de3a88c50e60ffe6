#include "formats/vdx/shared_parts.h"

#include <algorithm>
#include <map>

#include "base/text.h"
#include "formats/common/names.h"
#include "formats/package/part_name.h"
#include "formats/package/xml_measure.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"
#include "formats/vdx/vocabulary.h"

namespace quorvel::formats::vdx {
namespace {

struct PartKind {
  std::string_view name, contentType, relationship;
};
constexpr PartKind windowsKind{"/visio/windows.xml", "application/vnd.ms-visio.windows+xml",
                               "http://schemas.microsoft.com/visio/2010/relationships/windows"};
constexpr PartKind solutionsKind{"/visio/solutions/solutions.xml", "application/vnd.ms-visio.solutions+xml",
                                 "http://schemas.microsoft.com/visio/2010/relationships/solutions"};
constexpr PartKind solutionKind{"/visio/solutions/solution", "application/vnd.ms-visio.solution+xml",
                                "http://schemas.microsoft.com/visio/2010/relationships/solution"};
constexpr PartKind connectionsKind{"/visio/data/connections.xml", "application/vnd.ms-visio.connections+xml",
                                   "http://schemas.microsoft.com/visio/2010/relationships/connections"};
constexpr PartKind recordsetsKind{"/visio/data/recordsets.xml", "application/vnd.ms-visio.recordsets+xml",
                                  "http://schemas.microsoft.com/visio/2010/relationships/recordsets"};
constexpr PartKind recordsetKind{"/visio/data/recordset", "application/vnd.ms-visio.recordset+xml",
                                 "http://schemas.microsoft.com/visio/2010/relationships/recordset"};

bool isDeclaration(std::string_view attribute) { return attribute.starts_with("xmlns") || attribute == "xml:space"; }

/// What windows hold in both formats.
bool isOfWindows(std::string_view name) {
  static constexpr std::string_view known[] = {"Windows",
                                               "ClientWidth",
                                               "ClientHeight",
                                               "Window",
                                               "ID",
                                               "WindowType",
                                               "WindowState",
                                               "Document",
                                               "WindowLeft",
                                               "WindowTop",
                                               "WindowWidth",
                                               "WindowHeight",
                                               "Master",
                                               "ContainerType",
                                               "Container",
                                               "Sheet",
                                               "ReadOnly",
                                               "ParentWindow",
                                               "Page",
                                               "ViewScale",
                                               "ViewCenterX",
                                               "ViewCenterY",
                                               "StencilGroup",
                                               "StencilGroupPos",
                                               "ShowRulers",
                                               "ShowGrid",
                                               "ShowGuides",
                                               "ShowPageBreaks",
                                               "GlueSettings",
                                               "SnapSettings",
                                               "SnapAngles",
                                               "ShowConnectionPoints",
                                               "SnapExtensions",
                                               "TabSplitterPos",
                                               "SnapAngle",
                                               "DynamicGridEnabled"};
  return std::ranges::find(known, name) != std::end(known);
}

bool isAny(std::string_view) { return true; }

using Filter = bool (*)(std::string_view);

void writeInside(XmlWriter& writer, pugi::xml_node node, std::string_view prefix, Filter wanted);

/// The element in another namespace: only its local name counts.
void writeElement(XmlWriter& writer, pugi::xml_node node, std::string_view prefix, Filter wanted) {
  writer.start(std::string(prefix).append(localName(node)));
  writeInside(writer, node, prefix, wanted);
  writer.end();
}

void writeInside(XmlWriter& writer, pugi::xml_node node, std::string_view prefix, Filter wanted) {
  Attributes kept;
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (!isDeclaration(attribute.name()) && wanted(attribute.name())) keepAttribute(node, attribute, kept);
  }
  for (const auto& [name, value] : kept) writer.attribute(name, value);
  for (const pugi::xml_node child : node) {
    if (child.type() == pugi::node_element) {
      if (wanted(localName(child))) writeElement(writer, child, prefix, wanted);
    } else if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      if (!trimmed(child.value()).empty()) writer.text(child.value());
    }
  }
}

void startPart(XmlWriter& writer, std::string_view element) {
  writer.raw(xmlDeclaration).start(element).attribute("xmlns", names::drawingNamespace);
  writer.attribute("xmlns:r", names::relationshipNamespace);
}

/// An element as text, the same for every writing of it.
std::string plain(pugi::xml_node node) {
  std::map<std::string_view, std::string_view> attributes;
  for (const pugi::xml_attribute attribute : node.attributes()) {
    if (!isDeclaration(attribute.name())) attributes[attribute.name()] = attribute.value();
  }
  XmlWriter writer;
  writer.start(localName(node));
  for (const auto& [name, value] : attributes) writer.attribute(name, value);
  for (const pugi::xml_node child : node) {
    if (child.type() == pugi::node_element) writer.raw(plain(child));
    if (child.type() == pugi::node_pcdata && !trimmed(child.value()).empty()) writer.text(child.value());
  }
  return writer.end().take();
}

std::string plainPart(std::string bytes) {
  pugi::xml_document parsed;
  return parseXml(parsed, bytes).empty() ? plain(parsed.document_element()) : std::string();
}

/// Parts of a package with what they lead to.
class Parts {
 public:
  explicit Parts(const CarriedPackage& package) : package_(package) {}

  const CarriedPart* named(std::string_view name) const {
    const auto found =
        std::ranges::find(package_.parts, partKey(name), [](const CarriedPart& part) { return partKey(part.name); });
    return found == package_.parts.end() ? nullptr : &*found;
  }
  /// What the document leads to by a relationship of that kind.
  const CarriedPart* ofKind(const PartKind& kind) const {
    const Relationship* const lead = package_.document.ofType(kind.relationship);
    return lead && !lead->external ? named(lead->part) : nullptr;
  }
  const CarriedPart* behind(const CarriedPart& source, const char* id) const {
    const CarriedPart* const links = named(relationshipsPartOf(source.name));
    if (!links || !id) return nullptr;
    Relationships relationships;
    std::string xml = textOf(*links);
    if (!relationships.parse(source.name, xml).empty()) return nullptr;
    const Relationship* const found = relationships.withId(id);
    return found && !found->external ? named(found->part) : nullptr;
  }
  /// The XML of a part that is going to be parsed. Empty for what is longer than such parts are, taken together: it
  /// then goes the way of parts that have no words here.
  std::string textOf(const CarriedPart& part) const {
    constexpr std::uint64_t most = 256u << 20, mostWeight = 4'000'000;
    if (part.bytes.size() > most - text_) return {};
    std::string text = part.bytes.unpacked();
    const std::uint64_t weight = measureXml(text).weight;
    if (weight > mostWeight - weight_) return {};
    text_ += text.size();
    weight_ += weight;
    return text;
  }

 private:
  const CarriedPackage& package_;
  mutable std::uint64_t text_ = 0, weight_ = 0;  ///< taken so far
};

std::string windowsElement(const Parts& parts, const CarriedPart& part) {
  std::string bytes = parts.textOf(part);
  pugi::xml_document parsed;
  if (!parseXml(parsed, bytes).empty() || localName(parsed.document_element()) != "Windows") return {};
  XmlWriter writer;
  writeElement(writer, parsed.document_element(), {}, isOfWindows);
  return writer.take();
}

std::string solutionElements(const Parts& parts, const CarriedPart& list) {
  std::string bytes = parts.textOf(list);
  pugi::xml_document parsed;
  if (!parseXml(parsed, bytes).empty()) return {};
  std::string elements;
  for (const pugi::xml_node entry : parsed.document_element()) {
    if (localName(entry) != "Solution") continue;
    const CarriedPart* const part = parts.behind(list, attributeNamed(childNamed(entry, "Rel"), "id"));
    std::string xml = part ? parts.textOf(*part) : std::string();
    pugi::xml_document solution;
    if (!part || !parseXml(solution, xml).empty()) continue;
    const pugi::xml_node root = solution.document_element();
    XmlWriter writer;
    writer.start("SolutionXML").attribute("Name", entry.attribute("Name").value());
    if (localName(root) == "SolutionXML") {
      for (const pugi::xml_attribute attribute : root.attributes()) {
        const std::string_view name = attribute.name();
        if (name.starts_with("xmlns:") && name != "xmlns:r") writer.attribute(name, attribute.value());
      }
      for (const pugi::xml_node child : root) writer.raw(writtenXml(child));
    } else {
      writer.raw(rawXml(root));
    }
    elements += writer.end().take();
  }
  return elements;
}

std::string dataElements(const Parts& parts) {
  const std::string prefix = std::string(prefixOf(Vocabulary::Second)) + ":";
  const std::string declaration = "xmlns:" + std::string(prefixOf(Vocabulary::Second));
  std::string elements;
  for (const PartKind* kind : {&connectionsKind, &recordsetsKind}) {
    const CarriedPart* const part = parts.ofKind(*kind);
    std::string bytes = part ? parts.textOf(*part) : std::string();
    pugi::xml_document parsed;
    if (!part || !parseXml(parsed, bytes).empty()) continue;
    // The records themselves are inside their set here.
    std::vector<pugi::xml_node> links;
    for (const pugi::xml_node set : parsed.document_element()) {
      if (const pugi::xml_node link = childNamed(set, "Rel")) links.push_back(link);
    }
    for (pugi::xml_node link : links) {
      const CarriedPart* const records = parts.behind(*part, attributeNamed(link, "id"));
      std::string xml = records ? parts.textOf(*records) : std::string();
      link.set_name("ADOData");
      while (link.first_attribute()) link.remove_attribute(link.first_attribute());
      pugi::xml_document recordset;
      if (records && parseXml(recordset, xml).empty()) link.append_copy(recordset.document_element());
    }
    const pugi::xml_node root = parsed.document_element();
    XmlWriter writer;
    writer.start(prefix + std::string(localName(root))).attribute(declaration, namespaceOf(Vocabulary::Second));
    for (const pugi::xml_attribute attribute : root.attributes()) {
      if (!isDeclaration(attribute.name())) writer.attribute(attribute.name(), attribute.value());
    }
    for (const pugi::xml_node set : root) {
      if (set.type() != pugi::node_element) continue;
      writer.start(prefix + std::string(localName(set)));
      for (const pugi::xml_attribute attribute : set.attributes()) {
        if (!isDeclaration(attribute.name())) writer.attribute(attribute.name(), attribute.value());
      }
      for (const pugi::xml_node child : set) {
        if (child.type() != pugi::node_element) continue;
        if (localName(child) == "ADOData") {
          writer.start(prefix + "ADOData");
          for (const pugi::xml_node record : child) writer.raw(rawXml(record));
          writer.end();
        } else {
          writeElement(writer, child, prefix, isAny);
        }
      }
      writer.end();
    }
    elements += writer.end().take();
  }
  return elements;
}

/// Adds parts to a package, with their relationships.
class PartMaker {
 public:
  explicit PartMaker(CarriedPackage& package) : package_(package) {}

  void add(const PartKind& kind, const std::string& name, std::string bytes) {
    package_.parts.push_back({name, std::string(kind.contentType), std::move(bytes)});
  }
  void addToDocument(const PartKind& kind, std::string bytes) {
    package_.document.idFor(package_.documentPart, kind.relationship, kind.name);
    add(kind, std::string(kind.name), std::move(bytes));
  }
  /// A part behind `source`; gives the id of the relationship.
  std::string addBehind(const PartKind& source, Relationships& relationships, const PartKind& kind, int number,
                        std::string bytes) {
    const std::string name = std::string(kind.name) + std::to_string(number) + ".xml";
    add(kind, name, std::move(bytes));
    return relationships.idFor(source.name, kind.relationship, name);
  }
  void addRelationships(const PartKind& source, const Relationships& relationships) {
    if (relationships.empty()) return;
    package_.parts.push_back(
        {relationshipsPartOf(source.name), std::string(names::relationshipsType), relationships.xml()});
  }

 private:
  CarriedPackage& package_;
};

void makeSolutions(PartMaker& maker, pugi::xml_node elements, const AttributeList& declarations) {
  XmlWriter list;
  startPart(list, "Solutions");
  Relationships relationships;
  int number = 0;
  for (const pugi::xml_node element : elements) {
    if (localName(element) != "SolutionXML") continue;
    XmlWriter part;
    part.raw(xmlDeclaration).start("SolutionXML").attribute("xmlns", names::drawingNamespace);
    for (const auto& [name, value] : declarations) {
      if (name.starts_with("xmlns:")) part.attribute(name, value);
    }
    for (const pugi::xml_attribute attribute : element.attributes()) {
      const std::string_view name = attribute.name();
      const bool isKnown =
          std::ranges::find(declarations, name, &AttributeList::value_type::first) != declarations.end();
      if (name != "xmlns" && !isKnown) part.attribute(name, attribute.value());
    }
    for (const pugi::xml_node child : element) part.raw(writtenXml(child));
    const std::string id = maker.addBehind(solutionsKind, relationships, solutionKind, ++number, part.end().take());
    list.start("Solution").attribute("Name", element.attribute("Name").value());
    list.start("Rel").attribute("r:id", id).end().end();
  }
  if (number == 0) return;
  maker.addToDocument(solutionsKind, list.end().take());
  maker.addRelationships(solutionsKind, relationships);
}

void makeRecordsets(PartMaker& maker, pugi::xml_node element) {
  XmlWriter list;
  startPart(list, "DataRecordSets");
  for (const pugi::xml_attribute attribute : element.attributes()) {
    if (!isDeclaration(attribute.name())) list.attribute(attribute.name(), attribute.value());
  }
  Relationships relationships;
  int number = 0;
  for (const pugi::xml_node set : element) {
    if (localName(set) != "DataRecordSet") continue;
    pugi::xml_node records;
    for (const pugi::xml_node child : childNamed(set, "ADOData")) {
      if (child.type() == pugi::node_element) records = child;
    }
    list.start("DataRecordSet");
    for (const pugi::xml_attribute attribute : set.attributes()) {
      if (!isDeclaration(attribute.name())) list.attribute(attribute.name(), attribute.value());
    }
    if (records) {
      const std::string id = maker.addBehind(recordsetsKind, relationships, recordsetKind, ++number,
                                             std::string(xmlDeclaration) + rawXml(records));
      list.start("Rel").attribute("r:id", id).end();
    }
    for (const pugi::xml_node child : set) {
      if (child.type() == pugi::node_element && localName(child) != "ADOData") writeElement(list, child, {}, isAny);
    }
    list.end();
  }
  maker.addToDocument(recordsetsKind, list.end().take());
  maker.addRelationships(recordsetsKind, relationships);
}

std::string asList(const std::map<std::string, std::string>& elements, const std::string& name) {
  const auto found = elements.find(name);
  return "<a>" + (found == elements.end() ? std::string() : found->second) + "</a>";
}

}  // namespace

SharedElements sharedElements(const CarriedDocument& document) {
  SharedElements made;
  if (!document.package) return made;
  const Parts parts(*document.package);
  if (const CarriedPart* const windows = parts.ofKind(windowsKind)) made.windows = windowsElement(parts, *windows);
  if (const CarriedPart* const list = parts.ofKind(solutionsKind)) made.solutions = solutionElements(parts, *list);
  made.data = dataElements(parts);

  CarriedDocument again;
  again.olderElements = {{"Windows", made.windows}, {"SolutionXML", made.solutions}, {"", made.data}};
  makeSharedParts(again);
  if (!again.package) return made;
  for (const CarriedPart& part : again.package->parts) {
    const CarriedPart* const original = parts.named(part.name);
    if (original && plainPart(parts.textOf(*original)) == plainPart(part.bytes.unpacked()))
      made.parts.insert(partKey(part.name));
  }
  // A list goes with what it leads to, or all of it stays.
  for (const std::string_view folder : {"/visio/solutions/", "/visio/data/"}) {
    const auto isInside = [&](const CarriedPart& part) { return partKey(part.name).starts_with(folder); };
    const bool isWhole = std::ranges::all_of(document.package->parts, [&](const CarriedPart& part) {
      return !isInside(part) || made.parts.contains(partKey(part.name));
    });
    if (!isWhole) std::erase_if(made.parts, [&](const std::string& key) { return key.starts_with(folder); });
  }
  return made;
}

void makeSharedParts(CarriedDocument& document) {
  // Nobody else holds the package while its drawing is read.
  const auto package =
      document.package ? std::const_pointer_cast<CarriedPackage>(document.package) : std::make_shared<CarriedPackage>();
  package->documentPart = "/visio/document.xml";
  const std::size_t before = package->parts.size();
  PartMaker maker(*package);
  const auto lacks = [&](const PartKind& kind) { return !package->document.ofType(kind.relationship); };

  pugi::xml_document parsed;
  std::string xml = asList(document.olderElements, "Windows");
  if (lacks(windowsKind) && parseXml(parsed, xml).empty()) {
    if (const pugi::xml_node windows = childNamed(parsed.document_element(), "Windows")) {
      XmlWriter writer;
      startPart(writer, "Windows");
      writeInside(writer, windows, {}, isOfWindows);
      maker.addToDocument(windowsKind, writer.end().take());
    }
  }
  pugi::xml_document solutions;
  std::string solutionXml = asList(document.olderElements, "SolutionXML");
  if (lacks(solutionsKind) && parseXml(solutions, solutionXml).empty())
    makeSolutions(maker, solutions.document_element(), document.olderAttributes);

  pugi::xml_document later;
  std::string laterXml = asList(document.olderElements, "");
  if (parseXml(later, laterXml).empty()) {
    const pugi::xml_node root = later.document_element();
    if (const pugi::xml_node connections = childNamed(root, "DataConnections"); connections && lacks(connectionsKind)) {
      XmlWriter writer;
      startPart(writer, "DataConnections");
      writeInside(writer, connections, {}, isAny);
      maker.addToDocument(connectionsKind, writer.end().take());
    }
    if (const pugi::xml_node sets = childNamed(root, "DataRecordSets"); sets && lacks(recordsetsKind))
      makeRecordsets(maker, sets);
  }
  if (package->parts.size() > before) document.package = package;
}

}  // namespace quorvel::formats::vdx
