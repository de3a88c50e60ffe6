#include "formats/vsdx/document_reader.h"

#include <algorithm>

#include "formats/common/document_elements.h"
#include "formats/common/names.h"
#include "formats/common/shape_reader.h"
#include "formats/common/sheet_reader.h"
#include "formats/package/part_name.h"
#include "formats/vsdx/contents_reader.h"
#include "formats/vsdx/properties.h"
#include "host/recalc/missing_values.h"
#include "host/recalc/stale_values.h"

namespace quorvel::formats {
namespace {

using host::PageId;
using host::SheetId;

constexpr std::string_view contentTypesPart = "/[Content_Types].xml";
constexpr std::string_view getAgain = "copy or download it again, or save it again in its own program";

std::string damagedPart(std::string_view part, std::string_view wrong) {
  return "is damaged: in its part " + std::string(part) + " " + std::string(wrong) + "; " + std::string(getAgain);
}

/// A part's bytes with the tree that refers to them.
struct ParsedPart {
  std::string bytes;
  pugi::xml_document document;
  pugi::xml_node root() const { return document.document_element(); }
};

class DocumentReader {
 public:
  DocumentReader(host::Store& store, host::DocumentId document, const ZipPackage& package)
      : state_(store, document, package) {}

  std::string read() {
    for (const auto step :
         {&DocumentReader::openPackage, &DocumentReader::readProperties, &DocumentReader::readDocumentPart,
          &DocumentReader::readMasters, &DocumentReader::readPages, &DocumentReader::keepOtherParts}) {
      std::string wrong = (this->*step)();
      if (state_.package.isPastLimit()) return std::string(isPastLimits);
      if (!wrong.empty()) return wrong;
    }
    host::collectStaleValues(state_.store, state_.document, state_.unvalued);
    host::evaluateMissing(state_.store, state_.unvalued);
    carried_->package = state_.carriedPackage;
    document().extras = carried_;
    return {};
  }

 private:
  host::Document& document() { return *state_.store.document(state_.document); }
  CarriedPackage& package() { return *state_.carriedPackage; }

  std::string loadBytes(const std::string& part, std::string& bytes) {
    if (!state_.package.has(part)) return "is damaged: its part " + part + " is missing; " + std::string(getAgain);
    if (!state_.package.readXml(part, bytes)) return damagedPart(part, "the bytes do not unpack");
    state_.taken.insert(partKey(part));
    return {};
  }

  std::string load(const std::string& part, ParsedPart& parsed) {
    if (std::string wrong = loadBytes(part, parsed.bytes); !wrong.empty()) return wrong;
    const std::string wrong = parseXml(parsed.document, parsed.bytes);
    return wrong.empty() ? std::string() : damagedPart(part, wrong);
  }

  std::string loadRelationships(const std::string& source, Relationships& relationships) {
    const std::string part = relationshipsPartOf(source);
    if (!state_.package.has(part)) return {};
    std::string xml;
    if (!state_.package.readXml(part, xml)) return damagedPart(part, "the bytes do not unpack");
    state_.taken.insert(partKey(part));
    const std::string wrong = relationships.parse(source, xml);
    return wrong.empty() ? std::string() : damagedPart(part, wrong);
  }

  std::string openPackage();
  std::string readProperties();
  std::string readDocumentPart();
  std::string readMasters();
  std::string readPages();
  std::string readPagePart(PageId page, pugi::xml_node entry, const Relationships& list, std::string_view listPart,
                           CarriedPage& carry);
  std::string keepOtherParts();

  ReadState state_;
  std::shared_ptr<CarriedDocument> carried_ = std::make_shared<CarriedDocument>();
};

void keepAttributes(pugi::xml_node node, AttributeList& attributes) {
  for (const pugi::xml_attribute attribute : node.attributes())
    attributes.emplace_back(attribute.name(), attribute.value());
}

std::string DocumentReader::openPackage() {
  const std::string noDrawing = "is a zip file without a drawing in it; choose a .vsdx, .vssx or .vstx file";
  std::string xml;
  if (!state_.package.has(contentTypesPart)) return noDrawing;
  if (!state_.package.readXml(contentTypesPart, xml)) return damagedPart(contentTypesPart, "the bytes do not unpack");
  if (const std::string wrong = package().contentTypes.parse(xml); !wrong.empty())
    return damagedPart(contentTypesPart, wrong);
  state_.taken.insert(partKey(contentTypesPart));
  if (std::string wrong = loadRelationships("/", package().root); !wrong.empty()) return wrong;
  const Relationship* const found = package().root.ofType("/relationships/document");
  if (!found) return noDrawing;
  package().documentPart = found->part;
  const std::string type = package().contentTypes.typeOf(found->part);
  const auto kind = std::ranges::find(names::fileKinds, type, &names::FileKind::contentType);
  if (kind == std::end(names::fileKinds)) return noDrawing;
  document().isStencil = kind->isStencil;
  return loadRelationships(package().documentPart, package().document);
}

std::string DocumentReader::readProperties() {
  struct Part {
    std::string_view type;
    std::string CarriedPackage::*name;
    std::string CarriedDocument::*xml;
    std::string (*read)(std::string, host::DocumentProperties&);
  };
  static constexpr Part parts[] = {
      {"/core-properties", &CarriedPackage::corePart, &CarriedDocument::core, readCoreProperties},
      {"/extended-properties", &CarriedPackage::applicationPart, &CarriedDocument::application,
       readApplicationProperties},
      {"/custom-properties", &CarriedPackage::customPart, &CarriedDocument::custom, readCustomProperties},
  };
  for (const Part& part : parts) {
    const Relationship* const found = package().root.ofType(part.type);
    if (!found || !state_.package.has(found->part)) continue;
    std::string& xml = (*carried_).*part.xml;
    if (!state_.package.readXml(found->part, xml)) return damagedPart(found->part, "the bytes do not unpack");
    if (const std::string wrong = part.read(xml, document().properties); !wrong.empty())
      return damagedPart(found->part, wrong);
    package().*part.name = found->part;
    state_.taken.insert(partKey(found->part));
  }
  return {};
}

std::string DocumentReader::readDocumentPart() {
  ParsedPart part;
  if (std::string wrong = load(package().documentPart, part); !wrong.empty()) return wrong;
  if (localName(part.root()) != "VisioDocument") return damagedPart(package().documentPart, "the drawing is missing");
  keepAttributes(part.root(), carried_->documentAttributes);
  if (const pugi::xml_node styles = childNamed(part.root(), "StyleSheets")) readStyles(state_, styles, readPlainSheet);
  for (const pugi::xml_node child : part.root()) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view name = localName(child);
    if (name == "DocumentSettings") {
      readSettings(state_, *carried_, child);
    } else if (name == "Colors") {
      readColours(state_, *carried_, child);
    } else if (name == "FaceNames") {
      for (const pugi::xml_node face : child) {
        if (localName(face) != "FaceName") continue;
        auto carry = std::make_shared<CarriedFont>();
        for (const pugi::xml_attribute attribute : face.attributes()) {
          if (std::string_view(attribute.name()) != "NameU")
            carry->attributes.emplace_back(attribute.name(), attribute.value());
        }
        document().fonts.push_back({face.attribute("NameU").value(), std::move(carry)});
      }
    } else if (name == "DocumentSheet") {
      host::Sheet& sheet = *state_.store.sheet(document().sheet);
      CarriedName names;
      readNames(child, sheet.name, sheet.universalName, names);
      carriedOf(sheet).names = std::move(names);
      readPlainSheet(state_, sheet, child);
    } else if (name != "StyleSheets") {
      carried_->contents += rawXml(child);
    }
  }
  return {};
}

/// Reads the part behind an entry of the list of pages or masters, and the entry's own sheet.
std::string DocumentReader::readPagePart(PageId pageId, pugi::xml_node entry, const Relationships& list,
                                         std::string_view listPart, CarriedPage& carry) {
  const char* const listId = attributeNamed(childNamed(entry, "Rel"), "id");
  const Relationship* const relationship = listId ? list.withId(listId) : nullptr;
  if (!relationship || relationship->part.empty()) return damagedPart(listPart, "an entry leads to no part");
  // Two entries for one part would become two parts; nothing asks for that.
  if (state_.taken.contains(partKey(relationship->part)))
    return damagedPart(listPart, "two entries lead to the same part");
  carry.package = state_.carriedPackage;
  carry.part = relationship->part;
  carry.listId = listId;
  if (const pugi::xml_node sheet = childNamed(entry, "PageSheet"))
    readPlainSheet(state_, *state_.store.sheet(state_.store.page(pageId)->sheet), sheet);
  for (const pugi::xml_node child : entry) {
    if (child.type() != pugi::node_element || localName(child) == "PageSheet" || localName(child) == "Rel") continue;
    carry.contents += rawXml(child);
  }
  if (std::string wrong = loadRelationships(carry.part, carry.relationships); !wrong.empty()) return wrong;
  std::string bytes;
  if (std::string wrong = loadBytes(carry.part, bytes); !wrong.empty()) return wrong;
  const std::string wrong = readContents(state_, pageId, carry, bytes);
  return wrong.empty() ? std::string() : damagedPart(carry.part, wrong);
}

std::string DocumentReader::readMasters() {
  const Relationship* const found = package().document.ofType("/masters");
  if (!found) return {};
  package().mastersPart = found->part;
  ParsedPart list;
  if (std::string wrong = load(found->part, list); !wrong.empty()) return wrong;
  if (std::string wrong = loadRelationships(found->part, package().masters); !wrong.empty()) return wrong;
  keepAttributes(list.root(), carried_->mastersAttributes);

  for (const auto& [id, entry] : makeMasters(state_, list.root(), carried_->mastersTail)) {
    host::Master& master = *state_.store.master(id);
    auto carry = std::make_shared<CarriedPage>();
    readNames(entry, master.name, master.universalName, carry->names);
    for (const pugi::xml_attribute attribute : entry.attributes()) {
      const std::string_view name = attribute.name();
      if (name == "UniqueID") {
        master.uniqueId = attribute.value();
      } else if (name == "BaseID") {
        master.baseId = attribute.value();
      } else if (name != "ID" && name != "Name" && name != "NameU" && name != "IsCustomName" &&
                 name != "IsCustomNameU") {
        keepAttribute(entry, attribute, carry->attributes);
      }
    }
    master.prompt = entry.attribute("Prompt").value();
    master.hidden = truth(entry.attribute("Hidden").value());
    if (std::string wrong = readPagePart(master.contents, entry, package().masters, found->part, *carry);
        !wrong.empty())
      return wrong;
    master.extras = std::move(carry);
  }
  linkToMasters(state_);
  return {};
}

std::string DocumentReader::readPages() {
  const Relationship* const found = package().document.ofType("/pages");
  if (!found) return {};
  package().pagesPart = found->part;
  ParsedPart list;
  if (std::string wrong = load(found->part, list); !wrong.empty()) return wrong;
  if (std::string wrong = loadRelationships(found->part, package().pages); !wrong.empty()) return wrong;
  keepAttributes(list.root(), carried_->pagesAttributes);

  std::unordered_set<int> numbers;
  std::vector<std::pair<PageId, int>> backPages;
  for (const pugi::xml_node entry : list.root()) {
    if (entry.type() != pugi::node_element) continue;
    const Maybe<PageId> made = makePage(state_, entry, numbers, carried_->pagesTail);
    if (!made) continue;
    const PageId id = *made;
    host::Page& page = *state_.store.page(id);
    auto carry = std::make_shared<CarriedPage>();
    readNames(entry, page.name, page.universalName, carry->names);
    for (const pugi::xml_attribute attribute : entry.attributes()) {
      const std::string_view name = attribute.name();
      if (name == "BackPage") {
        backPages.emplace_back(id, wholeNumber(attribute.value(), -1));
      } else if (name != "ID" && name != "Name" && name != "NameU" && name != "IsCustomName" &&
                 name != "IsCustomNameU") {
        keepAttribute(entry, attribute, carry->attributes);
      }
    }
    if (std::string wrong = readPagePart(id, entry, package().pages, found->part, *carry); !wrong.empty()) return wrong;
    page.extras = std::move(carry);
    linkToMasters(state_);
  }
  resolveBackPages(state_, backPages);
  return {};
}

std::string DocumentReader::keepOtherParts() {
  for (const std::string& name : state_.package.names()) {
    if (state_.taken.contains(partKey(name))) continue;
    CarriedPart part{name, package().contentTypes.typeOf(name), {}};
    if (!state_.package.readPacked(name, part.bytes)) return damagedPart(name, "the bytes do not unpack");
    package().parts.push_back(std::move(part));
  }
  return {};
}

}  // namespace

std::string readDocument(host::Store& store, host::DocumentId document, const ZipPackage& package) {
  return DocumentReader(store, document, package).read();
}

}  // namespace quorvel::formats
