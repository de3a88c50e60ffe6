#include "formats/vdx/document_writer.h"

#include <algorithm>

#include "formats/common/document_elements.h"
#include "formats/common/omitted_members.h"
#include "formats/package/xml_reading.h"
#include "formats/vdx/package_parts.h"
#include "formats/vdx/properties.h"
#include "formats/vdx/shared_parts.h"
#include "formats/vdx/sheet_writer.h"

namespace quorvel::formats::vdx {
namespace {

using host::Document;
using host::Master;
using host::Page;
using host::Store;

bool isEmpty(const host::Sheet& sheet) {
  return sheet.sections.empty() && !sheet.extras && !sheet.lineStyle && !sheet.fillStyle && !sheet.textStyle;
}

constexpr std::string_view entryAttributes[] = {
    "MatchByName", "IconSize",  "PatternFlags", "Prompt",      "Hidden",     "IconUpdate",    "AlignName",
    "Background",  "ViewScale", "ViewCenterX",  "ViewCenterY", "ReviewerID", "AssociatedPage"};

/// What is carried for an entry, with only the attributes that this format has.
CarriedPage withKnownAttributes(const CarriedPage& carry) {
  CarriedPage entry;
  for (const auto& one : carry.attributes) {
    if (std::ranges::find(entryAttributes, one.first) != std::end(entryAttributes)) entry.attributes.push_back(one);
  }
  return entry;
}

/// Later releases write their version.
bool isOfFirstRelease(const CarriedDocument& carry) {
  const bool fromSingleFile = !carry.olderAttributes.empty() || !carry.olderElements.empty();
  return fromSingleFile && std::ranges::find(carry.olderAttributes, "version", &AttributeList::value_type::first) ==
                               carry.olderAttributes.end();
}

class DocumentWriter {
 public:
  DocumentWriter(const Store& store, const Document& document)
      : store_(store),
        document_(document),
        fallback_(std::make_shared<CarriedDocument>()),
        carry_(carried<CarriedDocument>(document.extras)) {
    isNew_ = !carry_;
    sheets_.firstRelease = carry_ && isOfFirstRelease(*carry_);
    if (isNew_) carry_ = fallback_.get();
    for (const host::FontFace& font : document.fonts) {
      const CarriedFont* const known = carried<CarriedFont>(font.extras);
      if (known && known->olderNumber >= 0) fonts_.add(known->olderNumber, font.name);
    }
    for (const host::FontFace& font : document.fonts) fonts_.numberOf(font.name);
  }

  std::string write();

 private:
  std::string_view older(const std::string& element) const {
    const auto found = carry_->olderElements.find(element);
    return found == carry_->olderElements.end() ? std::string_view() : std::string_view(found->second);
  }
  void startRoot(XmlWriter& writer) const;
  void writeFonts(XmlWriter& writer) const;
  void writeStyles(XmlWriter& writer);
  void writeDocumentSheet(XmlWriter& writer);
  void writeContents(XmlWriter& writer, const Page& page, const CarriedPage* carry);
  void writeMasters(XmlWriter& writer);
  void writePages(XmlWriter& writer);
  /// What packages say of masters, pages and the document where this format has no words, for the way back.
  void writePackageEntries(XmlWriter& writer) const;
  /// What of the carried elements of the document both formats have, by name; what only packages have, for "".
  std::string shared(std::string_view name) const;

  const Store& store_;
  const Document& document_;
  const std::shared_ptr<const CarriedDocument> fallback_;
  const CarriedDocument* carry_;
  bool isNew_ = false;
  FontNumbers fonts_;
  SheetWriter sheets_{store_, fonts_};
};

void DocumentWriter::startRoot(XmlWriter& writer) const {
  writer.raw(xmlDeclaration).start("VisioDocument").attribute("xmlns", coreNamespace);
  if (isNew_ || (carry_->package && carry_->olderAttributes.empty() && carry_->olderElements.empty()))
    writer.attribute("version", "11.0").attribute("xml:space", "preserve");
  writeAttributes(writer, carry_->olderAttributes);
}

/// The lists as they were read, unless cells name fonts that they lack.
void DocumentWriter::writeFonts(XmlWriter& writer) const {
  const auto listed = static_cast<std::size_t>(std::ranges::count_if(document_.fonts, [](const host::FontFace& font) {
    const CarriedFont* const known = carried<CarriedFont>(font.extras);
    return known && known->olderNumber >= 0;
  }));
  writer.raw(older("Fonts"));
  if (listed == fonts_.all().size()) {
    writer.raw(older("FaceNames"));
    return;
  }
  writer.start("FaceNames");
  for (const auto& [number, name] : fonts_.all()) {
    writer.start("FaceName").attribute("ID", number).attribute("Name", name);
    const auto face = std::ranges::find(document_.fonts, name, &host::FontFace::name);
    const CarriedFont* const known = face == document_.fonts.end() ? nullptr : carried<CarriedFont>(face->extras);
    for (const auto& [here, there] : {std::pair("UnicodeRanges", "UnicodeRanges"), std::pair("CharSets", "CharSets"),
                                      std::pair("Panos", "Panose"), std::pair("Flags", "Flags")}) {
      if (!known) continue;
      const auto found = std::ranges::find(known->attributes, there, &AttributeList::value_type::first);
      if (found != known->attributes.end()) writer.attribute(here, found->second);
    }
    writer.end();
  }
  writer.end();
}

void DocumentWriter::writeStyles(XmlWriter& writer) {
  writer.start("StyleSheets");
  for (const host::SheetId id : document_.styles) {
    const host::Sheet& style = *store_.sheet(id);
    writer.start("StyleSheet").attribute("ID", style.shapeId);
    sheets_.names(writer, style);
    sheets_.attributes(writer, style);
    sheets_.contents(writer, style);
    writer.end();
  }
  writer.end();
}

void DocumentWriter::writeDocumentSheet(XmlWriter& writer) {
  const host::Sheet& sheet = *store_.sheet(document_.sheet);
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  const bool named = carry && carry->names.known;
  if (!named && !isNew_ && isEmpty(sheet)) return;
  writer.start("DocumentSheet");
  if (named) {
    sheets_.names(writer, sheet);
  } else if (isNew_) {
    writer.attribute("NameU", "TheDoc").attribute("Name", "TheDoc");
  }
  sheets_.attributes(writer, sheet);
  sheets_.contents(writer, sheet);
  writer.end();
}

void DocumentWriter::writeContents(XmlWriter& writer, const Page& page, const CarriedPage* carry) {
  const host::Sheet& sheet = *store_.sheet(page.sheet);
  if (!isEmpty(sheet)) {
    writer.start("PageSheet");
    sheets_.attributes(writer, sheet);
    sheets_.contents(writer, sheet);
    writer.end();
  }
  const std::unordered_set<host::SheetId> omittedInFile = membersToOmit(store_, page);
  sheets_.leftOut = &omittedInFile;
  const std::string deleted = carry ? selfContained(carry->deletedShapes) : std::string();
  if (!page.shapes.empty() || !deleted.empty()) {
    writer.start("Shapes");
    for (const host::SheetId shape : page.shapes) writeShape(writer, store_, shape, sheets_);
    writer.raw(deleted).end();
  }
  sheets_.leftOut = nullptr;
  if (carry && page.master) {
    std::string xml = "<a>" + carry->contents + "</a>";
    pugi::xml_document parsed;
    if (parseXml(parsed, xml).empty()) {
      if (const pugi::xml_node icon = childNamed(parsed.document_element(), "Icon")) writer.raw(rawXml(icon));
    }
  }
  writeConnects(writer, page, carry);
  if (carry) writer.raw(carry->olderContents);
}

void DocumentWriter::writeMasters(XmlWriter& writer) {
  const std::string tail = selfContained(carry_->mastersTail);
  if (document_.masters.empty() && tail.empty()) return;
  writer.start("Masters");
  for (const host::MasterId id : document_.masters) {
    const Master& master = *store_.master(id);
    const CarriedPage* const carry = carried<CarriedPage>(master.extras);
    writer.start("Master").attribute("ID", master.fileId);
    writeBothNames(writer, carry ? &carry->names : nullptr, master.name, master.universalName);
    if (!master.uniqueId.empty()) writer.attribute("UniqueID", master.uniqueId);
    if (!master.baseId.empty()) writer.attribute("BaseID", master.baseId);
    const CarriedPage entry = carry ? withKnownAttributes(*carry) : CarriedPage();
    writeEntryAttributes(writer, carry ? &entry : nullptr,
                         {{"Prompt", master.prompt}, {"Hidden", master.hidden ? "1" : "0"}});
    if (!carry) {
      for (const auto& [name, value] :
           {std::pair("IconSize", "1"), std::pair("AlignName", "2"), std::pair("MatchByName", "0"),
            std::pair("IconUpdate", "1"), std::pair("PatternFlags", "0")})
        writer.attribute(name, value);
    }
    writeContents(writer, *store_.page(master.contents), carry);
    writer.end();
  }
  writer.raw(tail).end();
}

void DocumentWriter::writePages(XmlWriter& writer) {
  const std::string tail = selfContained(carry_->pagesTail);
  if (document_.pages.empty() && tail.empty()) return;
  writer.start("Pages");
  for (const host::PageId id : document_.pages) {
    const Page& page = *store_.page(id);
    const CarriedPage* const carry = carried<CarriedPage>(page.extras);
    writer.start("Page").attribute("ID", page.fileId);
    writeBothNames(writer, carry ? &carry->names : nullptr, page.name, page.universalName);
    if (const Page* const back = store_.page(page.backPage)) writer.attribute("BackPage", back->fileId);
    const CarriedPage entry = carry ? withKnownAttributes(*carry) : CarriedPage();
    writeEntryAttributes(writer, carry ? &entry : nullptr, {{"Background", page.background ? "1" : "0"}});
    writeContents(writer, page, carry);
    writer.end();
  }
  writer.raw(tail).end();
}

std::string DocumentWriter::shared(std::string_view name) const {
  std::string xml = "<a>" + selfContained(carry_->contents) + "</a>";
  pugi::xml_document parsed;
  if (!parseXml(parsed, xml).empty()) return {};
  std::string found;
  for (const pugi::xml_node child : parsed.document_element()) {
    const std::string_view element = localName(child);
    if (name.empty() ? element != "EventList" && element != "HeaderFooter" : element == name) found += rawXml(child);
  }
  return found;
}

void DocumentWriter::writePackageEntries(XmlWriter& writer) const {
  const auto entry = [&](std::string_view element, int fileId, const host::ExtrasPtr& extras, const std::string& name,
                         const std::string& universalName) {
    const CarriedPage* const carry = carried<CarriedPage>(extras);
    if (!carry) return;
    AttributeList attributes = packageOnly(carry->attributes, entryAttributes);
    addCustomNames(attributes, carry->names, name, universalName);
    if (attributes.empty()) return;
    writer.start(element).attribute("ID", fileId);
    writeAttributes(writer, attributes);
    writer.end();
  };
  for (const host::MasterId id : document_.masters) {
    const Master& master = *store_.master(id);
    entry("Master", master.fileId, master.extras, master.name, master.universalName);
  }
  for (const host::PageId id : document_.pages) {
    const Page& page = *store_.page(id);
    entry("Page", page.fileId, page.extras, page.name, page.universalName);
  }
  for (const std::string* const part : {&carry_->core, &carry_->application, &carry_->custom}) {
    std::string xml = *part;
    pugi::xml_document parsed;
    if (xml.empty() || !parseXml(parsed, xml).empty()) continue;
    // The schema of this format lacks the types of times.
    for (pugi::xml_node property : parsed.document_element()) property.remove_attribute("xsi:type");
    writer.raw(rawXml(parsed.document_element()));
  }
}

std::string DocumentWriter::write() {
  // Fonts get their numbers while the sheets are written, and are written before them.
  XmlWriter sheets;
  writeStyles(sheets);
  writeDocumentSheet(sheets);
  writeMasters(sheets);
  writePages(sheets);

  XmlWriter writer;
  startRoot(writer);
  writer.raw(writeProperties(std::string(older("DocumentProperties")), document_.properties));
  writer.raw(settingsXml(store_, document_));
  writeColours(writer, document_);
  writer.raw(older("PrintSetup"));
  writeFonts(writer);
  writer.raw(sheets.take());
  const SharedElements fromParts = sharedElements(*carry_);
  const auto orOfParts = [&](const char* name, const std::string& made) {
    return carry_->olderElements.contains(name) ? older(name) : std::string_view(made);
  };
  writer.raw(orOfParts("Windows", fromParts.windows)).raw(shared("EventList")).raw(shared("HeaderFooter"));
  static constexpr std::string_view last[] = {"VBProjectData", "EmailRoutingData"};
  static constexpr std::string_view placed[] = {
      "DocumentProperties", "PrintSetup", "Fonts", "FaceNames", "Windows", "SolutionXML", ""};
  for (const std::string_view name : last) writer.raw(older(std::string(name)));
  writer.raw(orOfParts("SolutionXML", fromParts.solutions));
  for (const auto& [name, xml] : carry_->olderElements) {
    const std::string_view element = name;
    if (std::ranges::find(last, element) == std::end(last) && std::ranges::find(placed, element) == std::end(placed))
      writer.raw(xml);
  }
  writer.raw(older(""));
  if (older("").find("DataRecordSets") == std::string_view::npos) writer.raw(fromParts.data);
  XmlWriter rest;
  writePackageEntries(rest);
  if (carry_->package) writePackageParts(rest, *carry_->package, fromParts.parts);
  if (const std::string xml = rest.raw(shared("")).take(); !xml.empty())
    writer.start("Document").attribute("xmlns", namespaceOf(Vocabulary::Package)).raw(xml).end();
  return writer.end().take();
}

}  // namespace

LeftOut leftOutBy(const Document& document) {
  LeftOut leftOut;
  const CarriedDocument* const carry = carried<CarriedDocument>(document.extras);
  if (carry && carry->package) addPartsLeftOut(leftOut, *carry->package, sharedElements(*carry).parts);
  return leftOut;
}

std::string writeDocument(const Store& store, const Document& document) {
  return DocumentWriter(store, document).write();
}

}  // namespace quorvel::formats::vdx
