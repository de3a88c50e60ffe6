#include "package_check.h"

#include <algorithm>
#include <map>
#include <set>

#include "formats/package/content_types.h"
#include "formats/package/part_name.h"
#include "formats/package/relationships.h"
#include "formats/package/xml_reading.h"
#include "formats/package/zip_package.h"

namespace quorvel::tools {
namespace {

using namespace formats;

constexpr std::string_view typesPart = "/[Content_Types].xml";

std::string_view text(pugi::xml_node node, const char* attribute) { return node.attribute(attribute).value(); }

bool isElement(pugi::xml_node node, std::string_view name) {
  return node.type() == pugi::node_element && localName(node) == name;
}

std::string named(pugi::xml_node node) {
  const std::string_view universal = text(node, "NameU");
  return std::string(universal.empty() ? text(node, "Name") : universal);
}

struct Part {
  std::string bytes;  ///< scrambled by the parser
  pugi::xml_document xml;
  Relationships relationships;
  pugi::xml_node root() const { return xml.document_element(); }
};

class PackageCheck {
 public:
  explicit PackageCheck(Strictness strictness) : isComplete_(strictness == Strictness::Complete) {}

  std::vector<std::string> run(const std::string& fileName) {
    if (const std::string wrong = package_.open(fileName); !wrong.empty()) {
      remark(wrong);
    } else if (readContentTypes()) {
      readParts();
      checkReach();
      checkDrawing();
    }
    return std::move(remarks_);
  }

 private:
  void remark(std::string what) { remarks_.push_back(std::move(what)); }

  bool readContentTypes() {
    if (package_.names().empty() || package_.names().front() != typesPart) remark("content types do not come first");
    std::string xml;
    if (!package_.read(typesPart, xml)) {
      remark("no content types");
      return false;
    }
    std::string copy = xml;
    if (const std::string wrong = types_.parse(copy); !wrong.empty()) remark("content types: " + wrong);
    pugi::xml_document parsed;
    parseXml(parsed, xml);
    std::set<std::string> said;
    for (const pugi::xml_node one : parsed.document_element()) {
      const bool isPart = isElement(one, "Override");
      const std::string key = partKey(text(one, isPart ? "PartName" : "Extension"));
      if (!said.insert(key).second) remark("content type of " + key + " is said twice");
      if (isPart && !package_.has(key)) remark("a content type for the missing part " + key);
    }
    return true;
  }

  void readParts() {
    for (const std::string& name : package_.names()) {
      if (name == typesPart) continue;
      const std::string type = types_.typeOf(name);
      if (type.empty()) remark(name + " has no content type");
      const bool isXml = name.ends_with(".xml") || name.ends_with(".rels");
      if (!isXml) continue;
      if (type == "application/xml") remark(name + " has no content type of its own");
      Part& part = parts_[partKey(name)];
      std::string wrong = package_.read(name, part.bytes) ? parseXml(part.xml, part.bytes) : "does not unpack";
      if (!wrong.empty()) remark(name + ": " + wrong);
      checkPrefixes(name, part.root());
    }
    for (auto& [key, part] : parts_) readRelationships(key, part.relationships);
    readRelationships("/", root_);
    for (const auto& [key, part] : parts_) checkIds(key, part);
  }

  void readRelationships(const std::string& source, Relationships& relationships) {
    std::string xml;
    if (!package_.read(relationshipsPartOf(source), xml)) return;
    std::string copy = xml;
    relationships.parse(source, copy);
    pugi::xml_document parsed;
    parseXml(parsed, xml);
    std::set<std::string> ids;
    for (const pugi::xml_node one : parsed.document_element()) {
      const std::string id(text(one, "Id"));
      const bool isName = !id.empty() && id.find_first_of(" :;,/") == std::string::npos && id[0] > '9';
      if (!isName) remark(source + ": \"" + id + "\" is no relationship id");
      if (!ids.insert(id).second) remark(source + ": relationship id " + id + " twice");
    }
    for (const Relationship& one : relationships.all()) {
      if (!one.external && (one.part.empty() || !package_.has(one.part)))
        remark(source + ": relationship " + one.id + " leads to the missing part " + one.target);
    }
  }

  /// Undeclared prefixes: a reader with namespaces refuses the whole part.
  void checkPrefixes(const std::string& name, pugi::xml_node root) {
    struct Walker : pugi::xml_tree_walker {
      std::set<std::string> unknown;
      void look(pugi::xml_node node, std::string_view called) {
        const std::size_t colon = called.find(':');
        if (colon == std::string_view::npos || called.starts_with("xml")) return;
        const std::string declaration = "xmlns:" + std::string(called.substr(0, colon));
        pugi::xml_node at = node;
        while (at && !at.attribute(declaration.c_str())) at = at.parent();
        if (!at) unknown.insert(std::string(called));
      }
      bool for_each(pugi::xml_node& node) override {
        look(node, node.name());
        for (const pugi::xml_attribute attribute : node.attributes()) look(node, attribute.name());
        return true;
      }
    } walker;
    if (!root) return;
    walker.for_each(root);
    root.traverse(walker);
    for (const std::string& one : walker.unknown) remark(name + ": the prefix of " + one + " is not declared");
  }

  void checkIds(const std::string& key, const Part& part) {
    struct Walker : pugi::xml_tree_walker {
      std::set<std::string> ids;
      bool for_each(pugi::xml_node& node) override {
        for (const pugi::xml_attribute attribute : node.attributes()) {
          if (std::string_view(attribute.name()) == "r:id") ids.insert(attribute.value());
        }
        return true;
      }
    } walker;
    pugi::xml_node root = part.root();
    if (root) root.traverse(walker);
    for (const std::string& id : walker.ids) {
      if (!part.relationships.withId(id)) remark(key + ": r:id " + id + " leads nowhere");
    }
  }

  void checkReach() {
    std::set<std::string> reached;
    std::vector<std::string> waiting;
    const auto reach = [&](const Relationships& relationships) {
      for (const Relationship& one : relationships.all()) {
        if (!one.external && reached.insert(partKey(one.part)).second) waiting.push_back(partKey(one.part));
      }
    };
    reach(root_);
    while (!waiting.empty()) {
      const std::string key = std::move(waiting.back());
      waiting.pop_back();
      const auto found = parts_.find(key);
      if (found != parts_.end()) {
        reach(found->second.relationships);
      } else {
        Relationships relationships;
        std::string xml;
        if (package_.read(relationshipsPartOf(key), xml)) relationships.parse(key, xml);
        reach(relationships);
      }
    }
    for (const std::string& name : package_.names()) {
      if (name != typesPart && !name.ends_with(".rels") && !reached.contains(partKey(name)))
        remark(name + ": no relationship leads there");
    }
  }

  const Part* behind(const Relationships& relationships, std::string_view typeEnd, std::string* key = nullptr) const {
    const Relationship* const one = relationships.ofType(typeEnd);
    if (!one) return nullptr;
    const auto found = parts_.find(partKey(one->part));
    if (found == parts_.end()) return nullptr;
    if (key) *key = found->first;
    return &found->second;
  }

  void checkDrawing() {
    const Part* const document = behind(root_, "/relationships/document");
    if (!document) return remark("no relationship leads to a document part");
    for (const pugi::xml_node sheets : document->root()) {
      if (!isElement(sheets, "StyleSheets")) continue;
      for (const pugi::xml_node style : sheets) {
        if (isElement(style, "StyleSheet") && !styles_.insert(std::string(text(style, "ID"))).second)
          remark("two styles of number " + std::string(text(style, "ID")));
      }
      for (const pugi::xml_node style : sheets) checkSheet(style, "style " + named(style));
    }
    if (const Part* const masters = behind(document->relationships, "/masters")) checkList(*masters, true);
    if (const Part* const pages = behind(document->relationships, "/pages")) checkList(*pages, false);
    if (isComplete_) {
      const Part* const application = behind(root_, "/extended-properties");
      if (!application || !childNamed(application->root(), "TitlesOfParts") ||
          !childNamed(application->root(), "HeadingPairs"))
        remark("the properties of the application list no titles");
    }
  }

  void checkList(const Part& list, bool ofMasters) {
    std::set<std::string> ids, uniqueIds, backgrounds;
    for (const pugi::xml_node entry : list.root()) {
      if (!isElement(entry, ofMasters ? "Master" : "Page")) continue;
      const std::string where = (ofMasters ? "master " : "page ") + named(entry);
      if (!ids.insert(std::string(text(entry, "ID"))).second) remark(where + ": its number is used twice");
      if (ofMasters && entry.attribute("UniqueID") && !uniqueIds.insert(std::string(text(entry, "UniqueID"))).second)
        remark(where + ": its UniqueID is used twice");
      if (isComplete_) checkEntry(entry, where, ofMasters);
      const pugi::xml_node sheet = childNamed(entry, "PageSheet");
      if (sheet) checkSheet(sheet, where);
      const char* const id = attributeNamed(childNamed(entry, "Rel"), "id");
      const Relationship* const lead = id ? list.relationships.withId(id) : nullptr;
      const auto found = lead ? parts_.find(partKey(lead->part)) : parts_.end();
      if (found == parts_.end()) {
        remark(where + ": nothing leads to its contents");
        continue;
      }
      if (!lead->type.ends_with(ofMasters ? "/master" : "/page")) remark(where + ": leads to a part of another kind");
      if (ofMasters) masters_[std::string(text(entry, "ID"))] = found->first;
      contents_.emplace_back(where, found->first);
    }
    for (const pugi::xml_node entry : list.root()) {
      if (!ofMasters && entry.attribute("BackPage") && !ids.contains(std::string(text(entry, "BackPage"))))
        remark("page " + named(entry) + ": its background is missing");
    }
    for (const auto& [where, key] : std::exchange(contents_, {})) checkContents(where, parts_.at(key));
  }

  void checkEntry(pugi::xml_node entry, const std::string& where, bool ofMasters) {
    for (const char* const name : {"Name", "NameU"}) {
      if (!entry.attribute(name)) remark(where + ": it has no " + name);
    }
    for (const char* const name : {"UniqueID", "BaseID"}) {
      if (ofMasters && text(entry, name).size() != 38) remark(where + ": it has no " + name);
    }
    if (ofMasters && !childNamed(entry, "Icon")) remark(where + ": it has no icon");
    const pugi::xml_node sheet = childNamed(entry, "PageSheet");
    for (const char* const name : {"PageWidth", "PageHeight", "PageScale", "DrawingScale"}) {
      if (!sheet.find_child_by_attribute("Cell", "N", name)) remark(where + ": it has no " + name);
    }
  }

  struct Contents {
    std::map<std::string, pugi::xml_node> shapes;
    std::set<std::string> masterParts;  ///< that relationships lead to
  };

  void checkContents(const std::string& where, const Part& part) {
    Contents contents;
    for (const Relationship& one : part.relationships.all()) {
      if (one.type.ends_with("/master")) contents.masterParts.insert(partKey(one.part));
    }
    checkShapes(childNamed(part.root(), "Shapes"), where, contents, {});
    std::set<std::pair<std::string, std::string>> ends;
    for (const pugi::xml_node one : childNamed(part.root(), "Connects")) {
      if (!isElement(one, "Connect")) continue;
      const std::string from(text(one, "FromSheet")), to(text(one, "ToSheet"));
      if (!contents.shapes.contains(from) || !contents.shapes.contains(to))
        remark(where + ": a connect of " + from + " to " + to + ", and one of them is missing");
      if (!ends.insert({from, std::string(text(one, "FromCell"))}).second)
        remark(where + ": an end of " + from + " is connected twice");
    }
  }

  void checkShapes(pugi::xml_node shapes, const std::string& page, Contents& contents, const std::string& around) {
    for (const pugi::xml_node shape : shapes) {
      // A deleted member has no number of its own.
      if (!isElement(shape, "Shape") || truth(text(shape, "Del"))) continue;
      const std::string id(text(shape, "ID")), where = page + ", shape " + id;
      if (!contents.shapes.emplace(id, shape).second) remark(where + ": its number is used twice");
      const std::string own(text(shape, "Master"));
      const std::string master = own.empty() ? around : own;
      if (!own.empty()) {
        const auto found = masters_.find(own);
        if (found == masters_.end()) {
          remark(where + ": there is no master " + own);
        } else if (!contents.masterParts.contains(found->second)) {
          remark(where + ": no relationship leads to its master");
        }
      }
      if (shape.attribute("MasterShape") && !hasShape(master, text(shape, "MasterShape")))
        remark(where + ": its master has no shape " + std::string(text(shape, "MasterShape")));
      checkSheet(shape, where);
      if (const pugi::xml_node members = childNamed(shape, "Shapes")) checkShapes(members, page, contents, master);
    }
  }

  bool hasShape(const std::string& master, std::string_view id) const {
    const auto found = masters_.find(master);
    if (found == masters_.end()) return false;
    std::vector<pugi::xml_node> waiting = {childNamed(parts_.at(found->second).root(), "Shapes")};
    while (!waiting.empty()) {
      const pugi::xml_node shapes = waiting.back();
      waiting.pop_back();
      for (const pugi::xml_node shape : shapes) {
        if (text(shape, "ID") == id) return true;
        if (const pugi::xml_node members = childNamed(shape, "Shapes")) waiting.push_back(members);
      }
    }
    return false;
  }

  void checkSheet(pugi::xml_node sheet, const std::string& where) {
    for (const char* const name : {"LineStyle", "FillStyle", "TextStyle"}) {
      if (sheet.attribute(name) && !styles_.contains(std::string(text(sheet, name))))
        remark(where + ": there is no style " + std::string(text(sheet, name)));
    }
    checkCells(sheet, where);
    std::set<std::string> sections;
    for (const pugi::xml_node section : sheet) {
      if (!isElement(section, "Section")) continue;
      const std::string name(text(section, "N"));
      if (!sections.insert(name + std::string(text(section, "IX"))).second)
        remark(where + ": section " + name + " twice");
      checkSection(section, where + ", " + name);
    }
  }

  void checkCells(pugi::xml_node around, const std::string& where) {
    std::set<std::string> cells;
    for (const pugi::xml_node cell : around) {
      if (isElement(cell, "Cell") && !cells.insert(std::string(text(cell, "N"))).second)
        remark(where + ": cell " + std::string(text(cell, "N")) + " twice");
    }
  }

  void checkSection(pugi::xml_node section, const std::string& where) {
    const bool geometry = text(section, "N") == "Geometry";
    std::set<std::string> rows;
    long last = 0;
    checkCells(section, where);
    for (const pugi::xml_node row : section) {
      if (!isElement(row, "Row")) continue;
      std::string key(row.attribute("N") ? text(row, "N") : text(row, "IX"));
      std::ranges::transform(key, key.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
      if (!rows.insert(key).second) remark(where + ": row " + key + " twice");
      if (geometry) {
        const long index = row.attribute("IX").as_llong(-1);
        if (index <= last) remark(where + ": rows out of order at " + key);
        last = index;
        if (!row.attribute("T")) remark(where + ": row " + key + " has no kind");
      } else if (truth(text(row, "Del")) && row.attribute("T")) {
        remark(where + ": the deleted row " + key + " has a kind");
      }
      checkCells(row, where + ", row " + key);
    }
  }

  const bool isComplete_;
  ZipPackage package_;
  ContentTypes types_;
  std::map<std::string, Part> parts_;  ///< those of XML, by key
  Relationships root_;
  std::set<std::string> styles_;
  std::map<std::string, std::string> masters_;  ///< number to key of the part
  std::vector<std::pair<std::string, std::string>> contents_;
  std::vector<std::string> remarks_;
};

}  // namespace

std::vector<std::string> checkPackage(const std::string& fileName, Strictness strictness) {
  return PackageCheck(strictness).run(fileName);
}

}  // namespace quorvel::tools
