#include "formats/common/shape_reader.h"

#include <algorithm>

#include "formats/common/connect_text.h"
#include "formats/common/repeated_text.h"
#include "formats/common/shape_types.h"
#include "formats/common/sheet_reader.h"

namespace quorvel::formats {
namespace {

using host::SheetId;
using host::SheetKind;
using host::TextBody;
using host::TextPiece;

/// Appends the pieces of a Text element; false when there is something in it that pieces cannot hold.
bool readText(pugi::xml_node node, TextBody& body) {
  bool complete = !node.first_attribute();
  const auto add = [&](TextPiece::Kind kind, int index, std::string text) {
    body.push_back({kind, index, std::move(text)});
  };
  for (const pugi::xml_node child : node) {
    if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
      if (!body.empty() && body.back().kind == TextPiece::Characters) {
        body.back().text += child.value();
      } else {
        add(TextPiece::Characters, 0, child.value());
      }
      continue;
    }
    if (child.type() != pugi::node_element) continue;
    const std::string_view name = localName(child);
    const int index = wholeNumber(child.attribute("IX").value(), -1);
    const bool plain = index >= 0 && !child.first_attribute().next_attribute();
    if (name == "fld") {
      for (const pugi::xml_node inner : child) {
        if (inner.type() == pugi::node_element) complete = false;
      }
      add(TextPiece::Field, std::max(index, 0), innerText(child));
      complete = complete && plain;
    } else if (name == "cp" || name == "pp" || name == "tp") {
      add(name == "cp"   ? TextPiece::CharacterRun
          : name == "pp" ? TextPiece::ParagraphRun
                         : TextPiece::TabRun,
          std::max(index, 0), {});
      complete = complete && plain && !child.first_child();
    } else {
      complete = false;
    }
  }
  return complete;
}

void readTextElement(host::Sheet& sheet, pugi::xml_node node) {
  auto body = std::make_shared<TextBody>();
  const bool complete = readText(node, *body);
  sheet.text = body;
  if (!complete) {
    carriedOf(sheet).text = rawXml(node);
    carriedOf(sheet).textRead = std::move(body);
  }
}

void readData(host::Sheet& sheet, int number, pugi::xml_node node) {
  std::string* const slots[] = {&sheet.data1, &sheet.data2, &sheet.data3};
  *slots[number] = innerText(node);
  if (slots[number]->empty()) carriedOf(sheet).emptyData |= 1u << number;
}

void readShape(ReadState& state, ShapeSource& source, SheetId parent, pugi::xml_node node, int instanceMaster) {
  const std::string_view type = node.attribute("Type").value();
  const Maybe<SheetKind> named = shapeKindOf(type);
  const SheetKind kind = named.or_(SheetKind::Shape);
  const int number = wholeNumber(node.attribute("ID").value(), 0);
  const SheetId id = state.store.addShape(source.page, parent, kind, number < largestFileNumber ? number : 0);
  host::Sheet& sheet = *state.store.sheet(id);

  PendingLink link{id, instanceMaster, -1, -1};
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    const char* const value = attribute.value();
    if (name == "ID" || name == "Name" || name == "NameU" || name == "IsCustomName" || name == "IsCustomNameU")
      continue;
    if (name == "Type" && named) continue;
    if (name == "Master" && state.masters.contains(wholeNumber(value, -1))) {
      link.ownMaster = wholeNumber(value, -1);
    } else if (name == "MasterShape" && wholeNumber(value, -1) >= 0 && instanceMaster >= 0) {
      link.masterShape = wholeNumber(value, -1);
    } else if (name == "UniqueID") {
      sheet.uniqueId = value;
    } else if (!readStyleAttribute(state, sheet, name, value)) {
      keepAttribute(node, attribute, carriedOf(sheet).attributes);
    }
  }
  if (link.ownMaster >= 0 || link.masterShape >= 0) state.pending.push_back(link);
  // A member of an instance inherits through that instance's master even when it is also an instance itself.
  const int membersMaster = link.masterShape < 0 && link.ownMaster >= 0 ? link.ownMaster : instanceMaster;
  if (type.empty()) carriedOf(sheet).lacksType = true;
  CarriedName names;
  readNames(node, sheet.name, sheet.universalName, names);
  if (needsCarrying(names)) carriedOf(sheet).names = std::move(names);

  bool behindText = false;
  for (const pugi::xml_node child : node) {
    if (child.type() != pugi::node_element) continue;
    const std::string_view element = localName(child);
    behindText = behindText || element == "Text" || element.starts_with("Data") || element == "ForeignData";
    if (element == "Shapes") {
      readShapes(state, source, id, child, membersMaster);
    } else if (element == "Text" && !sheet.text) {
      readTextElement(sheet, child);
    } else if (element == "Data1" || element == "Data2" || element == "Data3") {
      readData(sheet, element.back() - '1', child);
    } else if (element == "ForeignData" && !sheet.foreign &&
               source.vocabulary.readPicture(state, source, sheet, child)) {
      continue;
    } else {
      source.vocabulary.readChild(state, sheet, child, behindText);
    }
  }
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  if (!source.part.empty() && carry && !(usedIds(carry->contents).empty() && usedIds(carry->tail).empty())) {
    carriedOf(sheet).linksFrom = state.carriedPackage;
    carriedOf(sheet).linksFromPart = source.part;
  }
}

/// Takes one child of a Shapes element.
void readMember(ReadState& state, ShapeSource& source, SheetId parent, pugi::xml_node child, int instanceMaster) {
  if (child.type() != pugi::node_element) return;
  if (localName(child) == "Shape" && !truth(child.attribute("Del").value())) {
    readShape(state, source, parent, child, instanceMaster);
    return;
  }
  if (!parent) {
    source.shapesTail += rawXml(child);
    return;
  }
  CarriedSheet& carry = carriedOf(*state.store.sheet(parent));
  carry.deletedMembers += rawXml(child);
  carry.deletedMasterShapes.push_back(wholeNumber(child.attribute("MasterShape").value(), -1));
}

/// Following masters from `start` must come to an end, and not by way of `sheet`.
bool leadsBack(const host::Store& store, SheetId start, SheetId sheet) {
  int steps = 0;
  for (SheetId at = start; at; at = store.sheet(at)->prototype) {
    if (at == sheet || ++steps > 64) return true;
  }
  return false;
}

/// Makes the members that the file omitted from an instance: they are all the master's. Programs that write
/// drawings with little effort leave them out.
void addUnmentionedMembers(ReadState& state, SheetId rootId) {
  host::Store& store = state.store;
  if (store.sheet(store.sheet(rootId)->prototype)->children.empty()) return;
  std::unordered_map<SheetId, SheetId> counterparts;
  std::unordered_set<int> deleted;
  for (const SheetId id : store.subtree(rootId)) {
    const host::Sheet& member = *store.sheet(id);
    if (member.prototype) counterparts.emplace(member.prototype, id);
    if (const CarriedSheet* const carry = carried<CarriedSheet>(member.extras))
      deleted.insert(carry->deletedMasterShapes.begin(), carry->deletedMasterShapes.end());
  }
  const host::PageId page = store.sheet(rootId)->page;
  for (const SheetId id : store.subtree(store.sheet(rootId)->prototype)) {
    const host::Sheet& original = *store.sheet(id);
    const auto parent = counterparts.find(original.parent);
    if (counterparts.contains(id) || deleted.contains(original.shapeId) || parent == counterparts.end()) continue;
    // Masters within masters could otherwise multiply without end.
    if (++state.madeMembers > 100'000) return;
    const SheetId made = store.addShape(page, parent->second, original.kind);
    store.sheet(made)->prototype = id;
    carriedOf(*store.sheet(made)).omittedInFile = true;
    counterparts.emplace(id, made);
  }
}

}  // namespace

void readShapes(ReadState& state, ShapeSource& source, SheetId parent, pugi::xml_node shapes, int instanceMaster) {
  for (const pugi::xml_node child : shapes) readMember(state, source, parent, child, instanceMaster);
}

void readConnects(ReadState& state, host::PageId page, CarriedPage& carried, pugi::xml_node connects) {
  for (const pugi::xml_node connect : connects) {
    if (connect.type() != pugi::node_element) continue;
    host::Connect read;
    read.fromShape = wholeNumber(connect.attribute("FromSheet").value(), 0);
    read.fromCell = connect.attribute("FromCell").value();
    read.fromPart = wholeNumber(connect.attribute("FromPart").value(), 0);
    read.toShape = wholeNumber(connect.attribute("ToSheet").value(), 0);
    read.toCell = connect.attribute("ToCell").value();
    read.toPart = wholeNumber(connect.attribute("ToPart").value(), 0);
    const std::string raw = rawXml(connect);
    if (const std::string written = connectText(read); written != raw) carried.connects.emplace(written, raw);
    state.store.page(page)->connects.push_back(std::move(read));
  }
}

void linkToMasters(ReadState& state) {
  host::Store& store = state.store;
  for (const PendingLink& link : state.pending) {
    host::Sheet& sheet = *store.sheet(link.sheet);
    const auto own = state.masters.find(link.ownMaster);
    if (own != state.masters.end()) sheet.master = own->second;
    const auto source = link.masterShape >= 0 ? state.masters.find(link.instanceMaster) : own;
    SheetId prototype;
    if (source != state.masters.end()) {
      const host::Page& contents = *store.page(store.master(source->second)->contents);
      const auto member = contents.byShapeId.find(link.masterShape);
      if (link.masterShape < 0 && contents.shapes.size() == 1) prototype = contents.shapes.front();
      if (link.masterShape >= 0 && member != contents.byShapeId.end()) prototype = member->second;
    }
    if (prototype && !leadsBack(store, prototype, link.sheet)) {
      sheet.prototype = prototype;
      const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
      if (carry && carry->lacksType) sheet.kind = store.sheet(prototype)->kind;
    }
    if (!sheet.prototype && link.masterShape >= 0)
      carriedOf(sheet).attributes.emplace_back("MasterShape", std::to_string(link.masterShape));
  }
  for (const PendingLink& link : state.pending) {
    host::Sheet& sheet = *store.sheet(link.sheet);
    if (sheet.master && sheet.prototype && link.masterShape < 0) addUnmentionedMembers(state, link.sheet);
    inheritRepeatedText(store, sheet);
  }
  state.pending.clear();
}

void readForeignAttributes(pugi::xml_node node, host::ForeignData& image, CarriedForeign& carried) {
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (name == "ForeignType") {
      image.type = attribute.value();
    } else if (name == "CompressionType") {
      image.compression = attribute.value();
    } else {
      keepAttribute(node, attribute, carried.attributes);
    }
  }
}

}  // namespace quorvel::formats
