#include "formats/vsdx/document_writer.h"

#include <algorithm>

#include "formats/common/connect_text.h"
#include "formats/common/document_elements.h"
#include "formats/common/omitted_members.h"
#include "formats/common/sheet_writer.h"
#include "formats/package/part_name.h"
#include "formats/package/xml_reading.h"
#include "formats/vsdx/part_shapes.h"
#include "formats/vsdx/print_setup.h"
#include "formats/vsdx/properties.h"

namespace quorvel::formats {
namespace {

using host::Document;
using host::Master;
using host::Page;
using host::Store;

/// Macros have no place in a file that says it has none.
bool mayBeKept(const CarriedPart& part, const names::FileKind& kind) {
  return !isSignature(part) && (kind.holdsMacros || !isMacros(part));
}

bool isEmpty(const host::Sheet& sheet) {
  return sheet.sections.empty() && !sheet.extras && !sheet.lineStyle && !sheet.fillStyle && !sheet.textStyle;
}

/// In packages pages and masters have both names, where single files leave one out.
CarriedName namesOfEntry(const CarriedPage* carry) {
  CarriedName names = carry ? carry->names : CarriedName();
  if (carry && !carry->package) {
    names.hasName = !names.name.empty();
    names.hasUniversalName = !names.universalName.empty();
  }
  return names;
}

/// Writes a part's text with `write`, which counts the relationship ids that it puts there itself. What is carried may
/// use ids that lead nowhere; no new relationship takes one of them.
template <class Write>
std::string writeWithFreeIds(Relationships& relationships, Write write) {
  const Relationships before = relationships;
  std::vector<std::string> reserved;
  std::string text;
  for (bool again = true; again;) {
    relationships = before;
    relationships.reserve(reserved);
    std::map<std::string, std::size_t> own, used;
    text = write(own);
    for (const std::string& id : usedIds(text)) ++used[id];
    again = false;
    for (const auto& [id, times] : own) {
      if (before.withId(id) || used[id] <= times) continue;
      reserved.push_back(id);
      again = true;
    }
  }
  relationships.reserve(usedIds(text));
  return text;
}

class DocumentWriter {
 public:
  DocumentWriter(const Store& store, const Document& document, const names::FileKind& kind)
      : store_(store), document_(document), kind_(kind), carry_(carried<CarriedDocument>(document.extras)) {
    if (carry_ && carry_->package) package_ = carry_->package.get();
  }

  std::vector<ZipEntry> write();

 private:
  struct Output {
    std::string name, contentType, bytes;
    Relationships relationships;
  };

  void reserveNames();
  /// Takes the wanted name, or the next free one that begins with `start`.
  std::string freeName(const std::string& wanted, const std::string& start);
  const CarriedPage* carriedPage(const host::ExtrasPtr& extras) const;

  Output documentPart();
  Output mastersPart();
  Output pagesPart();
  Output contentsPart(const Page& page, const CarriedPage* carry, const std::string& name, bool isMaster);
  void startRoot(XmlWriter& writer, std::string_view element, const AttributeList* attributes) const;
  void writePageSheet(XmlWriter& writer, const Page& page) const;
  void addProperties();

  const Store& store_;
  const Document& document_;
  const names::FileKind& kind_;
  const CarriedDocument* carry_;
  const CarriedPackage* package_ = nullptr;

  std::unordered_set<std::string> taken_;  ///< keys of part names in use
  ImageParts pictures_{taken_};
  std::vector<const CarriedPart*> kept_;
  std::string documentPart_, mastersPart_, pagesPart_;
  std::unordered_map<host::MasterId, std::string> masterParts_;
  std::unordered_map<host::PageId, std::string> pageParts_;
  Relationships root_;
  std::vector<Output> outputs_;
};

std::string DocumentWriter::freeName(const std::string& wanted, const std::string& start) {
  if (!wanted.empty() && taken_.insert(partKey(wanted)).second) return wanted;
  for (int number = 1;; ++number) {
    std::string name = start + std::to_string(number) + ".xml";
    if (taken_.insert(partKey(name)).second) return name;
  }
}

const CarriedPage* DocumentWriter::carriedPage(const host::ExtrasPtr& extras) const {
  return carried<CarriedPage>(extras);
}

/// Names are assigned in this order, so that what is from the file keeps its name and what is new takes what is
/// left.
void DocumentWriter::reserveNames() {
  if (package_) {
    root_ = package_->root;
    for (const CarriedPart& part : package_->parts) {
      if (!mayBeKept(part, kind_)) continue;
      kept_.push_back(&part);
      taken_.insert(partKey(part.name));
    }
  }
  const auto named = [&](std::string CarriedPackage::*part, const char* usual) {
    const std::string name = package_ && !(package_->*part).empty() ? package_->*part : usual;
    taken_.insert(partKey(name));
    return name;
  };
  documentPart_ = named(&CarriedPackage::documentPart, "/visio/document.xml");
  mastersPart_ = named(&CarriedPackage::mastersPart, "/visio/masters/masters.xml");
  pagesPart_ = named(&CarriedPackage::pagesPart, "/visio/pages/pages.xml");
  for (const bool fromFile : {true, false}) {
    for (const host::MasterId id : document_.masters) {
      const CarriedPage* const carry = carriedPage(store_.master(id)->extras);
      const bool mine = carry && package_ && carry->package.get() == package_;
      if (mine == fromFile) masterParts_[id] = freeName(mine ? carry->part : "", "/visio/masters/master");
    }
    for (const host::PageId id : document_.pages) {
      const CarriedPage* const carry = carriedPage(store_.page(id)->extras);
      const bool mine = carry && package_ && carry->package.get() == package_;
      if (mine == fromFile) pageParts_[id] = freeName(mine ? carry->part : "", "/visio/pages/page");
    }
  }
}

void DocumentWriter::startRoot(XmlWriter& writer, std::string_view element, const AttributeList* attributes) const {
  writer.raw(xmlDeclaration).start(element);
  // A file may call the two namespaces otherwise; what is written here relies on these prefixes.
  writer.attribute("xmlns", names::drawingNamespace).attribute("xmlns:r", names::relationshipNamespace);
  if (attributes && !attributes->empty()) {
    for (const auto& [name, value] : *attributes) {
      if (name != "xmlns" && name != "xmlns:r") writer.attribute(name, value);
    }
  } else {
    writer.attribute("xml:space", "preserve");
  }
}

DocumentWriter::Output DocumentWriter::documentPart() {
  Output output{documentPart_, std::string(kind_.contentType), {}, package_ ? package_->document : Relationships()};
  XmlWriter writer;
  startRoot(writer, "VisioDocument", carry_ ? &carry_->documentAttributes : nullptr);
  writer.raw(settingsXml(store_, document_));
  writeColours(writer, document_);
  if (!document_.fonts.empty()) {
    writer.start("FaceNames");
    for (const host::FontFace& font : document_.fonts) {
      writer.start("FaceName").attribute("NameU", font.name);
      if (const CarriedFont* const carry = carried<CarriedFont>(font.extras))
        writeAttributes(writer, carry->attributes);
      writer.end();
    }
    writer.end();
  }
  writer.start("StyleSheets");
  for (const host::SheetId id : document_.styles) {
    const host::Sheet& style = *store_.sheet(id);
    const CarriedSheet* const carry = carried<CarriedSheet>(style.extras);
    writer.start("StyleSheet").attribute("ID", style.shapeId);
    writeNames(writer, carry ? &carry->names : nullptr, style.name, style.universalName);
    writeSheetAttributes(writer, store_, style);
    writeSheetContents(writer, store_, style);
    writer.end();
  }
  writer.end();
  const host::Sheet& sheet = *store_.sheet(document_.sheet);
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  const bool named = carry && carry->names.known;
  if (named || !carry_ || !isEmpty(sheet)) {
    writer.start("DocumentSheet");
    if (named) {
      writeNames(writer, &carry->names, sheet.name, sheet.universalName);
    } else if (!carry_) {
      writer.attribute("NameU", "TheDoc").attribute("Name", "TheDoc");
    }
    writeSheetAttributes(writer, store_, sheet);
    writeSheetContents(writer, store_, sheet);
    writer.end();
  }
  if (carry_) writer.raw(carry_->contents);
  output.bytes = writer.end().take();
  output.relationships.reserve(usedIds(output.bytes));
  return output;
}

void DocumentWriter::writePageSheet(XmlWriter& writer, const Page& page) const {
  host::Sheet sheet = *store_.sheet(page.sheet);
  if (carry_ && !page.master) {
    if (const auto printSetup = carry_->olderElements.find("PrintSetup"); printSetup != carry_->olderElements.end())
      takePrintSetup(printSetup->second, sheet);
  }
  if (isEmpty(sheet)) return;
  writer.start("PageSheet");
  writeSheetAttributes(writer, store_, sheet);
  writeSheetContents(writer, store_, sheet);
  writer.end();
}

DocumentWriter::Output DocumentWriter::contentsPart(const Page& page, const CarriedPage* carry, const std::string& name,
                                                    bool isMaster) {
  Output output{name, std::string(isMaster ? names::masterType : names::pageType), {}, {}};
  if (carry && package_ && carry->package.get() == package_) output.relationships = carry->relationships;
  PartContext context{store_, name, output.relationships, pictures_};
  context.leftOut = membersToOmit(store_, page);
  context.carry = carry;
  output.bytes = writeWithFreeIds(output.relationships, [&](std::map<std::string, std::size_t>& ids) {
    XmlWriter writer;
    startRoot(writer, isMaster ? "MasterContents" : "PageContents", carry ? &carry->contentsAttributes : nullptr);
    if (!page.shapes.empty() || (carry && !carry->deletedShapes.empty())) {
      writer.start("Shapes");
      for (const host::SheetId shape : page.shapes) writeShape(writer, context, shape);
      if (carry) writer.raw(carry->deletedShapes);
      writer.end();
    }
    writeConnects(writer, page, carry);
    if (carry) writer.raw(carry->contentsTail);
    ids = std::exchange(context.usedIds, {});
    return writer.end().take();
  });
  for (const host::MasterId master : document_.masters) {
    if (context.usedMasters.contains(master))
      output.relationships.idFor(name, names::masterRelationship, masterParts_.at(master));
  }
  return output;
}

DocumentWriter::Output DocumentWriter::mastersPart() {
  Output output{mastersPart_, std::string(names::mastersType), {}, package_ ? package_->masters : Relationships()};
  output.bytes = writeWithFreeIds(output.relationships, [&](std::map<std::string, std::size_t>& ids) {
    XmlWriter writer;
    startRoot(writer, "Masters", carry_ ? &carry_->mastersAttributes : nullptr);
    for (const host::MasterId listed : document_.masters) {
      const Master& master = *store_.master(listed);
      const CarriedPage* const carry = carriedPage(master.extras);
      writer.start("Master").attribute("ID", master.fileId);
      const CarriedName names = namesOfEntry(carry);
      writeNames(writer, &names, master.name, master.universalName);
      if (!master.uniqueId.empty()) writer.attribute("UniqueID", master.uniqueId);
      if (!master.baseId.empty()) writer.attribute("BaseID", master.baseId);
      writeEntryAttributes(writer, carry, {{"Prompt", master.prompt}, {"Hidden", master.hidden ? "1" : "0"}});
      if (!carry) {
        for (const auto& [name, value] :
             {std::pair("IconSize", "1"), std::pair("AlignName", "2"), std::pair("MatchByName", "0"),
              std::pair("IconUpdate", "1"), std::pair("PatternFlags", "0"), std::pair("MasterType", "2")})
          writer.attribute(name, value);
      }
      writePageSheet(writer, *store_.page(master.contents));
      if (carry) writer.raw(carry->contents);
      const std::string id =
          output.relationships.idFor(mastersPart_, names::masterRelationship, masterParts_.at(listed));
      ++ids[id];
      writer.start("Rel").attribute("r:id", id).end();
      writer.end();
    }
    if (carry_) writer.raw(carry_->mastersTail);
    return writer.end().take();
  });
  return output;
}

DocumentWriter::Output DocumentWriter::pagesPart() {
  Output output{pagesPart_, std::string(names::pagesType), {}, package_ ? package_->pages : Relationships()};
  output.bytes = writeWithFreeIds(output.relationships, [&](std::map<std::string, std::size_t>& ids) {
    XmlWriter writer;
    startRoot(writer, "Pages", carry_ ? &carry_->pagesAttributes : nullptr);
    for (const host::PageId listed : document_.pages) {
      const Page& page = *store_.page(listed);
      const CarriedPage* const carry = carriedPage(page.extras);
      writer.start("Page").attribute("ID", page.fileId);
      const CarriedName names = namesOfEntry(carry);
      writeNames(writer, &names, page.name, page.universalName);
      if (const Page* const back = store_.page(page.backPage)) writer.attribute("BackPage", back->fileId);
      writeEntryAttributes(writer, carry, {{"Background", page.background ? "1" : "0"}});
      writePageSheet(writer, page);
      if (carry) writer.raw(carry->contents);
      const std::string id = output.relationships.idFor(pagesPart_, names::pageRelationship, pageParts_.at(listed));
      ++ids[id];
      writer.start("Rel").attribute("r:id", id).end();
      writer.end();
    }
    if (carry_) writer.raw(carry_->pagesTail);
    return writer.end().take();
  });
  return output;
}

void DocumentWriter::addProperties() {
  const auto add = [&](std::string CarriedPackage::*part, const char* usual, std::string xml, std::string_view type,
                       std::string_view relationship) {
    if (xml.empty()) return;
    const std::string name = package_ && !(package_->*part).empty() ? package_->*part : usual;
    root_.idFor("/", relationship, name);
    outputs_.push_back({name, std::string(type), std::move(xml), {}});
  };
  add(&CarriedPackage::corePart, "/docProps/core.xml",
      writeCoreProperties(carry_ ? carry_->core : "", document_.properties), names::coreType, names::coreRelationship);
  add(&CarriedPackage::applicationPart, "/docProps/app.xml",
      writeApplicationProperties(carry_ ? carry_->application : "", store_, document_), names::applicationType,
      names::applicationRelationship);
  add(&CarriedPackage::customPart, "/docProps/custom.xml",
      writeCustomProperties(carry_ ? carry_->custom : "", document_.properties), names::customType,
      names::customRelationship);
}

std::vector<ZipEntry> DocumentWriter::write() {
  reserveNames();
  root_.idFor("/", names::documentRelationship, documentPart_);
  addProperties();
  Output document = documentPart();
  if (!document_.masters.empty() || (package_ && !package_->mastersPart.empty())) {
    document.relationships.idFor(documentPart_, names::mastersRelationship, mastersPart_);
    outputs_.push_back(mastersPart());
    for (const host::MasterId id : document_.masters) {
      const Master& master = *store_.master(id);
      outputs_.push_back(
          contentsPart(*store_.page(master.contents), carriedPage(master.extras), masterParts_.at(id), true));
    }
  }
  if (!document_.pages.empty() || (package_ && !package_->pagesPart.empty())) {
    document.relationships.idFor(documentPart_, names::pagesRelationship, pagesPart_);
    outputs_.push_back(pagesPart());
    for (const host::PageId id : document_.pages)
      outputs_.push_back(
          contentsPart(*store_.page(id), carriedPage(store_.page(id)->extras), pageParts_.at(id), false));
  }
  outputs_.push_back(std::move(document));
  for (const ImageParts::Part* picture : pictures_.all())
    outputs_.push_back({picture->name, picture->contentType, picture->picture->bytes, {}});

  std::unordered_set<std::string> present;
  for (const Output& output : outputs_) present.insert(partKey(output.name));
  for (const CarriedPart* part : kept_) present.insert(partKey(part->name));
  const auto kept = [&](const Relationship& one) { return one.external || present.contains(partKey(one.part)); };

  ContentTypes types = package_ ? package_->contentTypes.defaultsOnly() : ContentTypes();
  types.addDefault("rels", names::relationshipsType);
  types.addDefault("xml", "application/xml");
  for (const ImageParts::Part* picture : pictures_.all())
    types.addDefault(extensionOf(picture->name), picture->contentType);
  for (const Output& output : outputs_) types.set(output.name, output.contentType);
  for (const CarriedPart* part : kept_) types.set(part->name, part->contentType);

  std::vector<ZipEntry> entries;
  const auto add = [&](std::string_view name, std::string bytes) {
    entries.push_back({std::string(name.substr(1)), std::move(bytes)});
  };
  add("/[Content_Types].xml", types.xml());
  root_.keepOnly(kept);
  add(relationshipsPartOf("/"), root_.xml());
  for (Output& output : outputs_) {
    output.relationships.keepOnly(kept);
    if (!output.relationships.empty()) add(relationshipsPartOf(output.name), output.relationships.xml());
    add(output.name, std::move(output.bytes));
  }
  for (const CarriedPart* part : kept_) entries.push_back({part->name.substr(1), {}, &part->bytes});
  return entries;
}

}  // namespace

LeftOut leftOutBy(const Document& document, const names::FileKind& kind) {
  LeftOut leftOut;
  const CarriedDocument* const carry = carried<CarriedDocument>(document.extras);
  if (!carry) return leftOut;
  if (carry->package) {
    for (const CarriedPart& part : carry->package->parts) {
      if (!mayBeKept(part, kind)) addPart(leftOut, *carry->package, part);
    }
  }
  addOlderElements(leftOut, *carry);
  return leftOut;
}

std::vector<ZipEntry> writeDocument(const Store& store, const Document& document, const names::FileKind& kind) {
  return DocumentWriter(store, document, kind).write();
}

}  // namespace quorvel::formats
