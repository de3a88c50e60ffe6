#include "formats/vdx/cell_element.h"

#include <algorithm>

#include "base/text.h"
#include "formats/common/cell_text.h"
#include "formats/vdx/languages.h"

namespace quorvel::formats::vdx {
namespace {

/// How files say that a text is empty: by an attribute or, in those of the first release, by a character that no font
/// shows.
constexpr std::string_view emptyMark = "null";
constexpr std::string_view emptyCharacter = "\xEE\x80\x80";

std::string elementName(Vocabulary vocabulary, std::string_view name) {
  const std::string_view prefix = prefixOf(vocabulary);
  return prefix.empty() ? std::string(name) : std::string(prefix).append(":").append(name);
}

/// The children of an element that was read from a file before.
std::string elementsIn(std::string xml) {
  pugi::xml_document document;
  if (xml.empty() || !parseXml(document, xml).empty()) return {};
  std::string elements;
  for (const pugi::xml_node child : document.document_element()) {
    if (child.type() == pugi::node_element) elements += rawXml(child);
  }
  return elements;
}

void writeElement(XmlWriter& writer, Vocabulary vocabulary, std::string_view name, const CellAttributes& text,
                  std::string_view contents) {
  writer.start(elementName(vocabulary, name));
  if (text.hasUnit) writer.attribute("Unit", text.unit);
  if (text.hasFormula) writer.attribute("F", text.formula);
  if (text.hasError) writer.attribute("Err", text.error);
  if (text.hasValue && text.value.empty()) writer.attribute("V", emptyMark);
  writer.text(text.value).raw(contents).end();
}

}  // namespace

void startElement(XmlWriter& writer, Vocabulary vocabulary, std::string_view name, bool declares) {
  writer.start(elementName(vocabulary, name));
  if (declares && vocabulary != Vocabulary::Core)
    writer.attribute("xmlns:" + std::string(prefixOf(vocabulary)), namespaceOf(vocabulary));
}

void readCell(FileState& state, pugi::xml_node node, Vocabulary vocabulary, const host::CellKey& key, host::Row& row) {
  // Raw text of the element goes into elements that declare our own prefix.
  node.set_name(elementName(vocabulary, localName(node)).c_str());
  std::string value = innerText(node);
  bool hasElements = false;
  for (const pugi::xml_node child : node) hasElements = hasElements || child.type() == pugi::node_element;
  if (hasElements && value.find_first_not_of(" \t\r\n") == std::string::npos) value.clear();
  CellAttributes text;
  bool saysEmpty = false;
  for (const pugi::xml_attribute attribute : node.attributes()) {
    const std::string_view name = attribute.name();
    if (name == "Unit") {
      text.hasUnit = true;
      text.unit = attribute.value();
    } else if (name == "F") {
      text.hasFormula = true;
      text.formula = attribute.value();
    } else if (name == "Err") {
      text.hasError = true;
      text.error = attribute.value();
    } else if (name == "V") {
      saysEmpty = saysEmpty || attribute.value() == emptyMark;
      if (value.empty() && attribute.value() != emptyMark) value = attribute.value();
    }
  }
  if (value == emptyCharacter) {
    saysEmpty = true;
    value.clear();
  }
  text.hasValue = !value.empty() || saysEmpty || !text.hasFormula || text.formula == noFormulaText;
  text.value = value;

  const std::string raw = vocabulary == Vocabulary::Core ? rawXml(node) : writtenXml(node);
  CarriedRow* carriedRow = row.extras ? &extrasOf<CarriedRow>(row.extras) : nullptr;
  int olderPlace = 0;
  std::string olderFallback;
  const CarriedCell* const before = carriedRow ? carriedRow->find(key.column) : nullptr;
  if (vocabulary != vocabularyOf(key)) {
    olderPlace = static_cast<int>(vocabulary);
    if (before) {
      olderFallback = before->older;
    } else if (const host::Cell* const cell = row.find(key.column)) {
      XmlWriter own;
      writeCell(own, cellElement(key), key, *cell, nullptr, state.fonts);
      olderFallback = own.take();
    }
  } else if (before && before->olderPlace != 0) {
    const_cast<CarriedCell*>(before)->olderFallback = raw;
    return;
  }
  if (carriedRow) std::erase_if(carriedRow->cells, [&](const CarriedCell& one) { return one.column == key.column; });
  // "Inherited" without a value says nothing that is not so anyway; taken in, it would hide the master's value.
  const bool isCell = text.hasValue || text.formula != inheritedText;
  bool formulaIsBroken = false;
  if (isCell) {
    host::Cell& cell = row.at(key.column);
    cell = formats::readCell(key, host::definitionOf(key), text, state.store.formulas(), formulaIsBroken);
    if (lacksValue(text, cell)) state.unvalued.push_back({state.sheet, key});
    if (holdsFont(key)) nameFont(cell, state.fonts);
    if (holdsLanguage(key)) tagLanguage(cell);
    XmlWriter own;
    writeCell(own, cellElement(key), key, cell, nullptr, state.fonts);
    if (own.take() == raw) return;
  }
  CarriedCell carry = carriedCell(key.column, text, formulaIsBroken);
  carry.olderPlace = olderPlace;
  carry.olderFallback = std::move(olderFallback);
  carry.older = raw;
  extrasOf<CarriedRow>(row.extras).cells.push_back(std::move(carry));
}

void writeCell(XmlWriter& writer, std::string_view name, const host::CellKey& key, const host::Cell& cell,
               const CarriedRow* row, FontNumbers& fonts) {
  const host::CellDefinition* const definition = host::definitionOf(key);
  const CarriedCell* const carry = row ? row->find(key.column) : nullptr;
  host::Cell numbered;
  const host::Cell* shown = &cell;
  const bool isLanguage = holdsLanguage(key);
  if (isLanguage || holdsFont(key)) {
    numbered = cell;
    if (isLanguage) {
      numberLanguage(numbered);
    } else {
      numberFont(numbered, fonts);
    }
    shown = &numbered;
  }
  const Vocabulary vocabulary = vocabularyOf(key);
  if (carry && stillReads(*carry, key, definition, *shown)) {
    if (!carry->older.empty()) {
      writer.raw(carry->older);
      return;
    }
    writeElement(writer, vocabulary, name,
                 {carry->hasValue, carry->hasUnit, carry->hasFormula, carry->hasError, carry->value, carry->unit,
                  carry->formula, carry->error},
                 {});
    return;
  }
  thread_local WrittenCell written;
  formats::writeCell(key, definition, *shown, written);
  writeElement(writer, vocabulary, name,
               {true, !written.unit.empty(), written.hasFormula, !written.error.empty(), written.value, written.unit,
                written.formula, written.error},
               carry ? elementsIn(carry->older) : std::string());
}

void writeCellAgain(XmlWriter& writer, Vocabulary vocabulary, const host::CellKey& key, const host::Cell& cell) {
  thread_local WrittenCell written;
  formats::writeCell(key, host::definitionOf(key), cell, written);
  writeElement(writer, vocabulary, cellElement(key),
               {true, !written.unit.empty(), written.hasFormula, !written.error.empty(), written.value, written.unit,
                written.formula, written.error},
               {});
}

bool usesLaterFunctions(const host::Cell& cell) {
  static constexpr std::string_view functions[] = {
      "THEME",   "THEMEGUARD",   "THEMEVAL", "THEMERESTORE", "THEMECBV",     "CELLISTHEMED",     "SETATREFEXPR",
      "TINT",    "SETATREFEVAL", "SHADE",    "MSOTINT",      "MSOSHADE",     "LUMDIFF",          "SATDIFF",
      "HUEDIFF", "TONE",         "USERUI",   "IFERROR",      "LISTSHEETREF", "CONTAINERSHEETREF"};
  if (!cell.formula) return false;
  // This is called for every cell of a drawing: only what is before a parenthesis is compared.
  const std::string_view text = cell.formula->text();
  for (std::size_t at = text.find('('); at != std::string_view::npos; at = text.find('(', at + 1)) {
    const std::string_view before = text.substr(0, at);
    const bool isLater = std::ranges::any_of(functions, [&](std::string_view name) {
      return before.size() >= name.size() && equalIgnoringCase(before.substr(before.size() - name.size()), name);
    });
    if (isLater) return true;
  }
  return false;
}

}  // namespace quorvel::formats::vdx
