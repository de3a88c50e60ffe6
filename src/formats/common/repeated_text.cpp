#include "formats/common/repeated_text.h"

#include <algorithm>
#include <utility>

#include "formats/common/carried.h"
#include "formats/common/sheet_reader.h"
#include "host/sheet/inheritance.h"
#include "host/text/text.h"

namespace quorvel::formats {

using host::TextBody;
using host::TextPiece;

namespace {

/// What all fields of the inherited text show, one behind the other.
std::string shownFields(const host::Store& store, const host::Sheet& sheet) {
  std::string shown;
  for (const TextPiece& piece : *host::textOf(store, sheet.prototype)) {
    if (piece.kind == TextPiece::Field) shown.append(host::fieldText(store, sheet.id, piece.index)).append("\n");
  }
  return shown;
}

}  // namespace

bool showsOtherFields(const host::Store& store, const host::Sheet& sheet) {
  if (sheet.text || !sheet.prototype || !sheet.find(host::SectionNumber::TextField)) return false;
  const TextBody* const body = host::textOf(store, sheet.prototype);
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  if (body && carry && carry->lacksText && carry->fieldsWithoutText == shownFields(store, sheet)) return false;
  return body && std::any_of(body->begin(), body->end(), [&](const TextPiece& piece) {
           return piece.kind == TextPiece::Field &&
                  host::fieldText(store, sheet.id, piece.index) != host::fieldText(store, sheet.prototype, piece.index);
         });
}

void inheritRepeatedText(host::Store& store, host::Sheet& sheet) {
  if (showsOtherFields(store, sheet)) {
    carriedOf(sheet).lacksText = true;
    carriedOf(sheet).fieldsWithoutText = shownFields(store, sheet);
  }
  if (!sheet.text || !sheet.prototype) return;
  if (const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras); carry && !carry->text.empty()) return;
  const TextBody* const inherited = host::textOf(store, sheet.prototype);
  if (!inherited || inherited->size() != sheet.text->size()) return;
  for (std::size_t i = 0; i < inherited->size(); ++i) {
    const TextPiece& own = (*sheet.text)[i];
    const TextPiece& other = (*inherited)[i];
    if (own.kind != other.kind || own.index != other.index) return;
    if (own.kind == TextPiece::Field ? own.text != host::fieldText(store, sheet.id, own.index) : own.text != other.text)
      return;
  }
  const auto own = std::exchange(sheet.text, nullptr);
  if (!showsOtherFields(store, sheet)) sheet.text = own;
}

}  // namespace quorvel::formats
