#include "formats/vdx/vocabulary.h"

#include <algorithm>
#include <utility>

namespace quorvel::formats::vdx {
namespace {

using host::SectionNumber;

constexpr std::string_view packageNamespace = "http://schemas.microsoft.com/office/visio/2012/main";

constexpr std::pair<std::uint32_t, std::string_view> objectRows[] = {
    {1, "XForm"},       {2, "Line"},    {3, "Fill"},        {4, "XForm1D"},     {5, "Event"},      {6, "LayerMem"},
    {8, "StyleProp"},   {9, "Foreign"}, {10, "PageProps"},  {11, "TextBlock"},  {12, "TextXForm"}, {14, "Align"},
    {15, "Protection"}, {16, "Help"},   {17, "Misc"},       {18, "RulerGrid"},  {20, "DocProps"},  {21, "Image"},
    {22, "Group"},      {23, "Layout"}, {24, "PageLayout"}, {25, "PrintProps"},
};

constexpr std::pair<SectionNumber, std::string_view> sections[] = {
    {SectionNumber::Character, "Char"},
    {SectionNumber::Paragraph, "Para"},
    {SectionNumber::Tab, "Tabs"},
    {SectionNumber::Scratch, "Scratch"},
    {SectionNumber::Connection, "Connection"},
    {SectionNumber::Connection, "ConnectionABCD"},
    {SectionNumber::TextField, "Field"},
    {SectionNumber::Control, "Control"},
    {SectionNumber::Geometry, "Geom"},
    {SectionNumber::Action, "Act"},
    {SectionNumber::Layer, "Layer"},
    {SectionNumber::User, "User"},
    {SectionNumber::Property, "Prop"},
    {SectionNumber::Hyperlink, "Hyperlink"},
    {SectionNumber::Reviewer, "Reviewer"},
    {SectionNumber::Annotation, "Annotation"},
    {SectionNumber::ActionTag, "SmartTagDef"},
};

struct LaterCell {
  SectionNumber section;
  std::string_view name;
  Vocabulary vocabulary;
};
constexpr LaterCell laterCells[] = {
    {SectionNumber::Object, "EventMultiDrop", Vocabulary::Second},
    {SectionNumber::Object, "PageColor", Vocabulary::Second},
    {SectionNumber::Object, "LockFromGroupFormat", Vocabulary::Second},
    {SectionNumber::Object, "LockThemeColors", Vocabulary::Second},
    {SectionNumber::Object, "LockThemeEffects", Vocabulary::Second},
    {SectionNumber::Object, "ShapePlaceStyle", Vocabulary::Second},
    {SectionNumber::Object, "DrawingResizeType", Vocabulary::Third},
    {SectionNumber::Object, "DisplayLevel", Vocabulary::Third},
    {SectionNumber::Object, "Relationships", Vocabulary::Third},
    {SectionNumber::Object, "AvoidPageBreaks", Vocabulary::Third},
    {SectionNumber::Geometry, "NoQuickDrag", Vocabulary::Third},
    {SectionNumber::Action, "FlyoutChild", Vocabulary::Third},
    {SectionNumber::Object, "CompoundType", Vocabulary::Package},
    {SectionNumber::Object, "ShapeShdwBlur", Vocabulary::Package},
    {SectionNumber::Object, "ShapeShdwShow", Vocabulary::Package},
    {SectionNumber::Object, "ClippingPath", Vocabulary::Package},
    {SectionNumber::Object, "PageLockReplace", Vocabulary::Package},
    {SectionNumber::Object, "PageLockDuplicate", Vocabulary::Package},
    {SectionNumber::Object, "LockThemeConnectors", Vocabulary::Package},
    {SectionNumber::Object, "LockThemeFonts", Vocabulary::Package},
    {SectionNumber::Object, "LockThemeIndex", Vocabulary::Package},
    {SectionNumber::Object, "LockReplace", Vocabulary::Package},
    {SectionNumber::Object, "LockVariation", Vocabulary::Package},
    {SectionNumber::Object, "NoProofing", Vocabulary::Package},
    {SectionNumber::Object, "DocLockReplace", Vocabulary::Package},
    {SectionNumber::Object, "DocLockDuplicatePage", Vocabulary::Package},
    {SectionNumber::Object, "NoCoauth", Vocabulary::Package},
    {SectionNumber::Geometry, "Path", Vocabulary::Package},
    {SectionNumber::Action, "Prompt", Vocabulary::Package},
    {SectionNumber::Action, "Help", Vocabulary::Package},
    {SectionNumber::Property, "DataLinked", Vocabulary::Package},
};

SectionNumber generalized(SectionNumber section) {
  return host::isGeometry(section) ? SectionNumber::Geometry : section;
}

}  // namespace

std::string_view prefixOf(Vocabulary vocabulary) {
  return vocabulary == Vocabulary::Second ? "vx" : vocabulary == Vocabulary::Third ? "v14" : "";
}

std::string_view namespaceOf(Vocabulary vocabulary) {
  switch (vocabulary) {
    case Vocabulary::Second:
      return "http://schemas.microsoft.com/visio/2006/extension";
    case Vocabulary::Third:
      return "http://schemas.microsoft.com/office/visio/2010/extension";
    case Vocabulary::Package:
      return packageNamespace;
    default:
      return coreNamespace;
  }
}

std::string_view namespaceOf(pugi::xml_node node) {
  const std::string_view name = node.name();
  const std::size_t colon = name.rfind(':');
  const std::string declaration =
      colon == std::string_view::npos ? "xmlns" : "xmlns:" + std::string(name.substr(0, colon));
  for (pugi::xml_node at = node; at; at = at.parent()) {
    if (const pugi::xml_attribute found = at.attribute(declaration.c_str())) return found.value();
  }
  return {};
}

bool vocabularyOf(pugi::xml_node node, Vocabulary& vocabulary) {
  const std::string_view name = namespaceOf(node);
  if (name.empty() || name == firstNamespace) {
    vocabulary = Vocabulary::Core;
    return name == firstNamespace || std::string_view(node.name()).find(':') == std::string_view::npos;
  }
  for (const Vocabulary one : {Vocabulary::Core, Vocabulary::Second, Vocabulary::Third, Vocabulary::Package}) {
    if (namespaceOf(one) != name) continue;
    vocabulary = one;
    return true;
  }
  return false;
}

Vocabulary vocabularyOf(const host::CellKey& key) {
  if (key.column >= host::firstUnknownColumn) return Vocabulary::Package;
  const SectionNumber section = generalized(key.section);
  if (section == SectionNumber::Object ? elementOfObjectRow(key.row.index()).empty() : elementOf(section).empty())
    return Vocabulary::Package;
  const std::string_view name = host::columnName(key);
  const auto found = std::ranges::find_if(
      laterCells, [&](const LaterCell& one) { return one.section == section && one.name == name; });
  return found == std::end(laterCells) ? Vocabulary::Core : found->vocabulary;
}

std::string_view elementOfObjectRow(std::uint32_t row) {
  const auto found = std::ranges::find(objectRows, row, &std::pair<std::uint32_t, std::string_view>::first);
  return found == std::end(objectRows) ? std::string_view() : found->second;
}

int objectRowOf(std::string_view element) {
  const auto found = std::ranges::find(objectRows, element, &std::pair<std::uint32_t, std::string_view>::second);
  return found == std::end(objectRows) ? -1 : static_cast<int>(found->first);
}

std::string_view elementOf(SectionNumber section) {
  const auto found =
      std::ranges::find(sections, generalized(section), &std::pair<SectionNumber, std::string_view>::first);
  return found == std::end(sections) ? std::string_view() : found->second;
}

SectionNumber sectionOf(std::string_view element) {
  const auto found = std::ranges::find(sections, element, &std::pair<SectionNumber, std::string_view>::second);
  return found == std::end(sections) ? SectionNumber::None : found->first;
}

bool namesItsRows(SectionNumber section) {
  return section == SectionNumber::User || section == SectionNumber::Property || section == SectionNumber::Hyperlink ||
         section == SectionNumber::ActionTag;
}

std::string_view cellElement(const host::CellKey& key) {
  if (key.section == SectionNumber::Tab) {
    // The stops are elements of their own; their cells need no number.
    static constexpr std::string_view names[] = {"Position", "Alignment", "Leader"};
    return names[(key.column - 1) % 3];
  }
  return host::columnName(key);
}

}  // namespace quorvel::formats::vdx
