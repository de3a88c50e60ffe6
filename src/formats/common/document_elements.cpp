#include "formats/common/document_elements.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "formats/common/connect_text.h"
#include "formats/common/sheet_reader.h"
#include "formats/package/xml_reading.h"

namespace quorvel::formats {

void readSettings(ReadState& state, CarriedDocument& carry, pugi::xml_node node) {
  host::Document& document = *state.store.document(state.document);
  carry.settings = rawXml(node);
  static constexpr std::pair<std::string_view, int> protections[] = {
      {"ProtectStyles", 1}, {"ProtectShapes", 2}, {"ProtectMasters", 4}, {"ProtectBkgnds", 8}};
  for (const auto& [name, bit] : protections) {
    if (truth(innerText(childNamed(node, name)))) document.protection |= bit;
  }
  for (const auto& [attribute, style] : {std::pair("DefaultLineStyle", &host::Document::defaultLineStyle),
                                         std::pair("DefaultFillStyle", &host::Document::defaultFillStyle),
                                         std::pair("DefaultTextStyle", &host::Document::defaultTextStyle),
                                         std::pair("DefaultGuideStyle", &host::Document::defaultGuideStyle)}) {
    const auto found = state.styles.find(wholeNumber(node.attribute(attribute).value(), -1));
    if (found != state.styles.end()) document.*style = found->second;
  }
}

void readColours(ReadState& state, CarriedDocument& carry, pugi::xml_node node) {
  host::Document& document = *state.store.document(state.document);
  for (const pugi::xml_node entry : node) {
    const std::string_view text = entry.attribute("RGB").value();
    const int index = wholeNumber(entry.attribute("IX").value(), -1);
    std::uint32_t rgb = 0;
    if (index < 0 || text.size() != 7 || text.front() != '#') continue;
    if (std::from_chars(text.data() + 1, text.data() + 7, rgb, 16).ptr == text.data() + 7)
      document.colours[index] = rgb;
  }
  carry.colours = rawXml(node);
  carry.coloursRead = document.colours;
}

void readStyles(ReadState& state, pugi::xml_node node, void (*readSheet)(ReadState&, host::Sheet&, pugi::xml_node)) {
  std::vector<std::pair<host::SheetId, pugi::xml_node>> made;
  for (const pugi::xml_node entry : node) {
    const int number = wholeNumber(entry.attribute("ID").value(), -1);
    if (localName(entry) != "StyleSheet" || number < 0 || number > largestFileNumber || state.styles.contains(number))
      continue;
    const host::SheetId id = state.store.addStyle(state.document, number, {});
    host::Sheet& style = *state.store.sheet(id);
    style.sections.clear();
    CarriedName names;
    readNames(entry, style.name, style.universalName, names);
    carriedOf(style).names = std::move(names);
    state.styles.emplace(number, id);
    made.emplace_back(id, entry);
  }
  // The engine's own first style stays in front unless the file has one of that number at another place.
  std::vector<host::SheetId>& order = state.store.document(state.document)->styles;
  std::erase_if(order, [&](host::SheetId id) {
    return std::ranges::find(made, id, &decltype(made)::value_type::first) != made.end();
  });
  for (const auto& [id, entry] : made) order.push_back(id);
  for (const auto& [id, entry] : made) readSheet(state, *state.store.sheet(id), entry);

  // Inheritance follows these links to their end, so a file must not close them to a ring.
  for (const auto link : {&host::Sheet::lineStyle, &host::Sheet::fillStyle, &host::Sheet::textStyle}) {
    for (const auto& [id, entry] : made) {
      std::size_t steps = 0;
      for (host::SheetId at = id; at && steps <= made.size(); at = state.store.sheet(at)->*link) ++steps;
      if (steps > made.size()) state.store.sheet(id)->*link = {};
    }
  }
}

std::vector<std::pair<host::MasterId, pugi::xml_node>> makeMasters(ReadState& state, pugi::xml_node list,
                                                                   std::string& unread) {
  std::vector<std::pair<host::MasterId, pugi::xml_node>> made;
  for (const pugi::xml_node entry : list) {
    if (entry.type() != pugi::node_element) continue;
    const int number = wholeNumber(entry.attribute("ID").value(), -1);
    if (localName(entry) != "Master" || number < 0 || number > largestFileNumber || state.masters.contains(number)) {
      unread += rawXml(entry);
      continue;
    }
    const host::MasterId id = state.store.addMaster(state.document, {});
    state.store.master(id)->fileId = number;
    state.masters.emplace(number, id);
    made.emplace_back(id, entry);
  }
  return made;
}

Maybe<host::PageId> makePage(ReadState& state, pugi::xml_node entry, std::unordered_set<int>& numbers,
                             std::string& unread) {
  const int number = wholeNumber(entry.attribute("ID").value(), -1);
  if (localName(entry) != "Page" || number < 0 || number > largestFileNumber || !numbers.insert(number).second) {
    unread += rawXml(entry);
    return {};
  }
  const host::PageId id = state.store.addPage(state.document, {});
  host::Page& page = *state.store.page(id);
  page.fileId = number;
  page.background = truth(entry.attribute("Background").value());
  return id;
}

void resolveBackPages(ReadState& state, const std::vector<std::pair<host::PageId, int>>& wanted) {
  for (const auto& [id, number] : wanted) {
    for (const host::PageId candidate : state.store.document(state.document)->pages) {
      if (state.store.page(candidate)->fileId != number) continue;
      bool ring = false;
      for (host::PageId at = candidate; at && !ring; at = state.store.page(at)->backPage) ring = at == id;
      if (!ring) state.store.page(id)->backPage = candidate;
    }
  }
}

std::string settingsXml(const host::Store& store, const host::Document& document) {
  const CarriedDocument* const carry = carried<CarriedDocument>(document.extras);
  std::string xml = carry ? carry->settings : std::string();
  if (xml.empty()) {
    xml =
        "<DocumentSettings TopPage=\"0\" DefaultTextStyle=\"0\" DefaultLineStyle=\"0\" DefaultFillStyle=\"0\" "
        "DefaultGuideStyle=\"0\"><GlueSettings>9</GlueSettings><SnapSettings>295</SnapSettings>"
        "<SnapExtensions>34</SnapExtensions><SnapAngles/><DynamicGridEnabled>1</DynamicGridEnabled>"
        "<ProtectStyles>0</ProtectStyles><ProtectShapes>0</ProtectShapes><ProtectMasters>0</ProtectMasters>"
        "<ProtectBkgnds>0</ProtectBkgnds></DocumentSettings>";
  }
  pugi::xml_document parsed;
  if (!parseXml(parsed, xml).empty()) return {};
  pugi::xml_node root = parsed.document_element();
  for (const auto& [name, style] : {std::pair("DefaultTextStyle", document.defaultTextStyle),
                                    std::pair("DefaultLineStyle", document.defaultLineStyle),
                                    std::pair("DefaultFillStyle", document.defaultFillStyle),
                                    std::pair("DefaultGuideStyle", document.defaultGuideStyle)}) {
    const host::Sheet* const sheet = store.sheet(style);
    if (!sheet) continue;
    pugi::xml_attribute attribute = root.attribute(name);
    // An attribute that the file left out says style 0.
    if (attribute ? wholeNumber(attribute.value(), -1) != sheet->shapeId : sheet->shapeId != 0) {
      if (!attribute) attribute = root.append_attribute(name);
      attribute = sheet->shapeId;
    }
  }
  for (const auto& [name, bit] : {std::pair("ProtectStyles", 1), std::pair("ProtectShapes", 2),
                                  std::pair("ProtectMasters", 4), std::pair("ProtectBkgnds", 8)}) {
    pugi::xml_node element = childNamed(root, name);
    const bool wanted = (document.protection & bit) != 0;
    if (truth(innerText(element)) == wanted) continue;
    if (!element) element = root.append_child(name);
    element.text().set(wanted ? 1 : 0);
  }
  return rawXml(root);
}

void writeColours(XmlWriter& writer, const host::Document& document) {
  const CarriedDocument* const carry = carried<CarriedDocument>(document.extras);
  if (carry && carry->coloursRead == document.colours) {
    writer.raw(carry->colours);
    return;
  }
  if (document.colours.empty()) return;
  writer.start("Colors");
  for (const auto& [index, rgb] : document.colours) {
    char text[16];
    std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(rgb) & 0xFFFFFFu);
    writer.start("ColorEntry").attribute("IX", index).attribute("RGB", text).end();
  }
  writer.end();
}

void writeEntryAttributes(XmlWriter& writer, const CarriedPage* carry,
                          std::initializer_list<std::pair<std::string_view, std::string_view>> current) {
  static const AttributeList none;
  const AttributeList& before = carry ? carry->attributes : none;
  for (const auto& [name, value] : current) {
    const auto found = std::ranges::find(before, name, &AttributeList::value_type::first);
    if (found == before.end() && !value.empty() && value != "0") writer.attribute(name, value);
  }
  for (const auto& [name, value] : before) {
    const auto now = std::ranges::find(current, name, &std::pair<std::string_view, std::string_view>::first);
    const bool same = now == current.end() || now->second == value || (now->second == "1" && value == "true") ||
                      (now->second == "0" && value == "false");
    writer.attribute(name, same ? std::string_view(value) : now->second);
  }
}

void writeConnects(XmlWriter& writer, const host::Page& page, const CarriedPage* carry) {
  if (page.connects.empty()) return;
  writer.start("Connects");
  for (const host::Connect& connect : page.connects) {
    const std::string text = connectText(connect);
    const auto asRead = carry ? carry->connects.find(text) : std::map<std::string, std::string>::const_iterator();
    writer.raw(carry && asRead != carry->connects.end() ? asRead->second : text);
  }
  writer.end();
}

}  // namespace quorvel::formats
