#include "formats/vdx/document_reader.h"

#include <algorithm>
#include <unordered_set>

#include "formats/common/document_elements.h"
#include "formats/common/shape_reader.h"
#include "formats/common/sheet_reader.h"
#include "formats/vdx/image_bytes.h"
#include "formats/vdx/package_parts.h"
#include "formats/vdx/properties.h"
#include "formats/vdx/shared_parts.h"
#include "formats/vdx/sheet_reader.h"
#include "formats/vdx/sheet_writer.h"
#include "formats/vdx/vocabulary.h"
#include "formats/vdx/whole_rows.h"
#include "host/recalc/missing_values.h"
#include "host/recalc/stale_values.h"
#include "host/sheet/bitmap_file.h"

namespace quorvel::formats::vdx {
namespace {

using host::PageId;

constexpr std::string_view getAgain = "copy or download it again, or save it again in its own program";

bool readPicture(ReadState&, const ShapeSource&, host::Sheet& sheet, pugi::xml_node node) {
  Maybe<std::string> bytes = fromBase64(innerText(node));
  if (!bytes || bytes->empty()) return false;
  auto picture = std::make_shared<host::ForeignData>();
  auto carry = std::make_shared<CarriedForeign>();
  readForeignAttributes(node, *picture, *carry);
  picture->extension = extensionOf(picture->type, picture->compression);
  std::string bitmap = picture->extension == "bmp" ? host::bitmapFile(*bytes) : std::string();
  carry->olderLacksHeader = !bitmap.empty();
  picture->bytes = carry->olderLacksHeader ? std::move(bitmap) : std::move(*bytes);
  picture->extras = std::move(carry);
  sheet.foreign = std::move(picture);
  return true;
}

void readShapeChild(ReadState& state, host::Sheet& sheet, pugi::xml_node child, bool) {
  readSheetChild(fileState(state), sheet, child);
}

constexpr ShapeVocabulary vocabulary{readShapeChild, readPicture};

class DocumentReader {
 public:
  DocumentReader(host::Store& store, host::DocumentId document) : state_(store, document, noPackage_) {}

  std::string read(std::string& bytes);

 private:
  host::Document& document() { return *state_.store.document(state_.document); }
  void readFonts(pugi::xml_node root);
  void readRootChild(pugi::xml_node child);
  /// Reads an element for what only packages have; false for others.
  bool keepsPackageEntry(pugi::xml_node node);
  void takePackageEntries();
  void readContents(PageId page, pugi::xml_node entry, CarriedPage& carry);
  void readMasters(pugi::xml_node list);
  void followInherited(PageId page);
  void readPages(pugi::xml_node list);

  ZipPackage noPackage_;  ///< the shared readers look for parts in it and find none
  FileState state_;
  const Relationships noRelationships_;
  std::vector<pugi::xml_node> packageEntries_;
  bool firstRelease_ = false;
  std::shared_ptr<CarriedDocument> carried_ = std::make_shared<CarriedDocument>();
};

void DocumentReader::readFonts(pugi::xml_node root) {
  // The first release listed fonts in another element; a file with both means the same fonts twice.
  for (const auto& [list, entry] : {std::pair("FaceNames", "FaceName"), std::pair("Fonts", "FontEntry")}) {
    for (const pugi::xml_node face : childNamed(root, list)) {
      const int number = wholeNumber(face.attribute("ID").value(), -1);
      const std::string name = face.attribute("Name").value();
      if (localName(face) != entry || number < 0 || name.empty() || state_.fonts.nameOf(number)) continue;
      auto carry = std::make_shared<CarriedFont>();
      carry->olderNumber = number;
      for (const auto& [here, there] : {std::pair("UnicodeRanges", "UnicodeRanges"), std::pair("CharSets", "CharSets"),
                                        std::pair("Panos", "Panose"), std::pair("Flags", "Flags")}) {
        if (const pugi::xml_attribute attribute = face.attribute(here))
          carry->attributes.emplace_back(there, attribute.value());
      }
      state_.fonts.add(number, name);
      document().fonts.push_back({name, std::move(carry)});
    }
  }
}

void DocumentReader::readRootChild(pugi::xml_node child) {
  const std::string name(localName(child));
  Vocabulary whose;
  if (!vocabularyOf(child, whose) || whose == Vocabulary::Second || whose == Vocabulary::Third) {
    carried_->olderElements[""] += rawXml(child);
  } else if (whose == Vocabulary::Package) {
    for (const pugi::xml_node one : child) {
      if (one.type() == pugi::node_element && !keepsPackageEntry(one) && !readPackagePart(*carried_, one))
        carried_->contents += rawXml(one);
    }
  } else if (name == "DocumentProperties") {
    readProperties(child, document().properties);
    carried_->olderElements[name] = rawXml(child);
  } else if (name == "DocumentSettings") {
    readSettings(state_, *carried_, child);
  } else if (name == "Colors") {
    readColours(state_, *carried_, child);
  } else if (name == "DocumentSheet") {
    host::Sheet& sheet = *state_.store.sheet(document().sheet);
    CarriedName names;
    readNames(child, sheet.name, sheet.universalName, names);
    carriedOf(sheet).names = std::move(names);
    vdx::readPlainSheet(state_, sheet, child);
  } else if (name == "EventList" || name == "HeaderFooter") {
    carried_->contents += rawXml(child);
  } else if (name != "StyleSheets" && name != "Masters" && name != "Pages") {
    carried_->olderElements[name] += rawXml(child);
  }
}

bool DocumentReader::keepsPackageEntry(pugi::xml_node node) {
  const std::string_view name = localName(node), whose = namespaceOf(node);
  if ((name == "Master" || name == "Page") && node.attribute("ID")) {
    packageEntries_.push_back(node);
    return true;
  }
  std::string* const part = name == "coreProperties"                  ? &carried_->core
                            : name != "Properties"                    ? nullptr
                            : whose.ends_with("/extended-properties") ? &carried_->application
                            : whose.ends_with("/custom-properties")   ? &carried_->custom
                                                                      : nullptr;
  if (part) *part = rawXml(node);
  return part != nullptr;
}

void DocumentReader::takePackageEntries() {
  for (const pugi::xml_node entry : packageEntries_) {
    const int number = wholeNumber(entry.attribute("ID").value(), -1);
    const auto take = [&](const host::ExtrasPtr& extras) {
      // Only the reader holds what is carried while the drawing is read.
      auto& carry = const_cast<CarriedPage&>(static_cast<const CarriedPage&>(*extras));
      takeCustomNames(entry, carry.names, carry.attributes);
    };
    if (localName(entry) == "Master") {
      if (const auto found = state_.masters.find(number); found != state_.masters.end())
        take(state_.store.master(found->second)->extras);
      continue;
    }
    for (const PageId id : document().pages) {
      if (state_.store.page(id)->fileId == number) take(state_.store.page(id)->extras);
    }
  }
}

void DocumentReader::readContents(PageId pageId, pugi::xml_node entry, CarriedPage& carry) {
  ShapeSource source{pageId, noRelationships_, vocabulary};
  for (const pugi::xml_node child : entry) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view name = localName(child);
    if (name == "PageSheet") {
      vdx::readPlainSheet(state_, *state_.store.sheet(state_.store.page(pageId)->sheet), child);
    } else if (name == "Shapes") {
      readShapes(state_, source, {}, child, -1);
    } else if (name == "Connects") {
      readConnects(state_, pageId, carry, child);
    } else if (name == "Icon") {
      carry.contents += rawXml(child);
    } else {
      carry.olderContents += rawXml(child);
    }
  }
  carry.deletedShapes = std::move(source.shapesTail);
  for (const host::SheetId top : state_.store.page(pageId)->shapes) {
    for (const host::SheetId id : state_.store.subtree(top)) orderRows(*state_.store.sheet(id));
  }
  state_.rowPlaces.clear();
}

void DocumentReader::followInherited(PageId page) {
  for (const host::SheetId top : state_.store.page(page)->shapes) {
    for (const host::SheetId id : state_.store.subtree(top))
      dropRepeated(state_.store, *state_.store.sheet(id), firstRelease_);
  }
}

bool isName(std::string_view attribute) { return attribute == "ID" || attribute == "Name" || attribute == "NameU"; }

void DocumentReader::readMasters(pugi::xml_node list) {
  for (const auto& [id, entry] : makeMasters(state_, list, carried_->mastersTail)) {
    host::Master& master = *state_.store.master(id);
    auto carry = std::make_shared<CarriedPage>();
    readNames(entry, master.name, master.universalName, carry->names);
    for (const pugi::xml_attribute attribute : entry.attributes()) {
      const std::string_view name = attribute.name();
      if (name == "UniqueID") {
        master.uniqueId = attribute.value();
      } else if (name == "BaseID") {
        master.baseId = attribute.value();
      } else if (!isName(name)) {
        carry->attributes.emplace_back(name, attribute.value());
      }
    }
    master.prompt = entry.attribute("Prompt").value();
    master.hidden = truth(entry.attribute("Hidden").value());
    readContents(master.contents, entry, *carry);
    master.extras = std::move(carry);
  }
  linkToMasters(state_);
  for (const host::MasterId id : document().masters) followInherited(state_.store.master(id)->contents);
}

void DocumentReader::readPages(pugi::xml_node list) {
  std::unordered_set<int> numbers;
  std::vector<std::pair<PageId, int>> backPages;
  for (const pugi::xml_node entry : list) {
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
      } else if (!isName(name)) {
        carry->attributes.emplace_back(name, attribute.value());
      }
    }
    readContents(id, entry, *carry);
    page.extras = std::move(carry);
    linkToMasters(state_);
    followInherited(id);
  }
  resolveBackPages(state_, backPages);
}

std::string DocumentReader::read(std::string& bytes) {
  if (bytes.starts_with("PK") || bytes.starts_with("\xD0\xCF\x11\xE0"))
    return "is no XML drawing although its name says so; rename it to the ending of the program that made it";
  pugi::xml_document parsed;
  if (const std::string wrong = parseXml(parsed, bytes); !wrong.empty())
    return "is damaged: " + wrong + "; " + std::string(getAgain);
  const pugi::xml_node root = parsed.document_element();
  const std::string_view whose = namespaceOf(root);
  if (localName(root) != "VisioDocument" || (whose != coreNamespace && whose != firstNamespace))
    return "is XML without a drawing in it; choose a .vdx, .vsx or .vtx file";
  for (const pugi::xml_attribute attribute : root.attributes()) {
    const std::string_view name = attribute.name();
    // Key and start say that only the program that made the file has changed it, which is not true after a save.
    if (name != "xmlns" && name != "key" && name != "start")
      carried_->olderAttributes.emplace_back(name, attribute.value());
  }
  firstRelease_ = !root.attribute("version");
  readFonts(root);
  if (const pugi::xml_node styles = childNamed(root, "StyleSheets")) readStyles(state_, styles, vdx::readPlainSheet);
  for (const pugi::xml_node child : root) {
    if (child.type() == pugi::node_element) readRootChild(child);
  }
  readMasters(childNamed(root, "Masters"));
  readPages(childNamed(root, "Pages"));
  takePackageEntries();
  host::collectStaleValues(state_.store, state_.document, state_.unvalued);
  host::evaluateMissing(state_.store, state_.unvalued);
  makeSharedParts(*carried_);
  document().extras = carried_;
  return {};
}

}  // namespace

std::string readDocument(host::Store& store, host::DocumentId document, std::string& bytes) {
  return DocumentReader(store, document).read(bytes);
}

}  // namespace quorvel::formats::vdx
