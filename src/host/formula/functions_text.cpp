// Functions on text, lists in text, and formats.
#include <algorithm>
#include <cmath>

#include "base/basic_text.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "host/formula/functions.h"
#include "host/formula/operators.h"
#include "host/formula/value_format.h"

namespace quorvel::host {
namespace {

Value start(Call& call, std::string (*take)(std::string_view, long)) {
  const std::string text = call.text(0);
  const int count = call.whole(1, 1);
  return count < 0 ? call.fail(ErrorCode::Value) : Value::text(take(text, count));
}

Value middle(Call& call) {
  const std::string text = call.text(0);
  const int from = call.whole(1, 1), count = call.whole(2);
  if (from < 1) return call.fail(ErrorCode::Value);
  return Value::text(count < 0 ? mid(text, from) : mid(text, from, count));
}

Value find(Call& call) {
  std::string part = call.text(0), text = call.text(1);
  const int from = call.whole(2, 1);
  if (call.truth(3)) {
    part = foldCase(part);
    text = foldCase(text);
  }
  if (from < 1 || (from > static_cast<long>(lengthOf(text)) && !(part.empty() && from == 1)))
    return call.fail(ErrorCode::Value);
  const long place = inStr(mid(text, from), part);
  return place == 0 ? call.fail(ErrorCode::Value) : Value::number(static_cast<double>(place + from - 1));
}

Value replacePart(Call& call) {
  const std::string text = call.text(0);
  const int from = call.whole(1, 1), count = call.whole(2);
  if (from < 1 || count < 0) return call.fail(ErrorCode::Value);
  return Value::text(left(text, from - 1) + call.text(3) + mid(text, static_cast<long>(from) + count));
}

Value repeat(Call& call) {
  const std::string text = call.text(0);
  const int count = call.whole(1);
  if (count < 0 || text.size() * static_cast<std::size_t>(count) > textLimit) return call.fail(ErrorCode::Value);
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return Value::text(result);
}

/// Bytes of `part` at byte `at` of `text`, compared without case when wanted; 0 when it is not there.
std::size_t matchLength(std::string_view text, std::size_t at, std::string_view part, bool ignoreCase) {
  if (!ignoreCase) return text.substr(at).starts_with(part) ? part.size() : 0;
  std::size_t i = at, j = 0;
  while (j < part.size()) {
    if (i >= text.size() || foldCase(decodeNext(text, i)) != foldCase(decodeNext(part, j))) return 0;
  }
  return i - at;
}

Value substitute(Call& call) {
  const std::string text = call.text(0), part = call.text(1), by = call.text(2);
  const int wanted = call.whole(3, 0);
  const bool ignoreCase = call.truth(4);
  if (part.empty()) return Value::text(text);
  std::string result;
  int occurrence = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = matchLength(text, at, part, ignoreCase);
    if (length != 0 && (++occurrence == wanted || wanted == 0)) {
      result += by;
      at += length;
    } else {
      const std::size_t from = at;
      decodeNext(text, at);
      result.append(text, from, at - from);
    }
    if (result.size() > textLimit) return call.fail(ErrorCode::Value);
  }
  return Value::text(result);
}

/// No blanks around, single ones between words.
std::string collapsed(std::string_view text) {
  std::string result;
  for (const std::string_view word : splitAt(text, ' ')) {
    if (word.empty()) continue;
    if (!result.empty()) result += ' ';
    result += word;
  }
  return result;
}

Value character(Call& call, int largest) {
  const int code = call.whole(0);
  if (code < 1 || code > largest || (code >= 0xD800 && code < 0xE000)) return call.fail(ErrorCode::Value);
  std::string text;
  appendUtf8(text, static_cast<char32_t>(code));
  return Value::text(text);
}

std::vector<std::string_view> splitList(std::string_view list, std::string_view delimiter) {
  std::vector<std::string_view> items;
  std::size_t from = 0;
  for (std::size_t at; !delimiter.empty() && (at = list.find(delimiter, from)) != std::string_view::npos;
       from = at + delimiter.size())
    items.push_back(list.substr(from, at - from));
  items.push_back(list.substr(from));
  return items;
}

Value itemOfList(Call& call) {
  const double index = call.number(0);
  const std::string list = call.text(1), delimiter = call.text(2, ";");
  const auto items = splitList(list, delimiter);
  if (index > -1 && index < static_cast<double>(items.size()))
    return Value::text(items[static_cast<std::size_t>(std::max(index, 0.0))]);
  return call.given(3) ? call.value(3) : Value::text("");
}

Value placeInList(Call& call) {
  const std::string key = call.text(0), list = call.text(1), delimiter = call.text(2, ";");
  const auto items = splitList(list, delimiter);
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (equalIgnoringCase(items[i], key)) return Value::number(static_cast<double>(i));
  }
  return Value::number(-1);
}

Value same(Call& call, bool ignoreCase) {
  const std::string a = call.text(0), b = call.text(1);
  return Value::boolean(ignoreCase ? equalIgnoringCase(a, b) : a == b);
}

Value format(Call& call) {
  const Value value = call.value(0);
  const std::string format = call.text(1);
  return Value::text(formatValue(value, format));
}

/// FORMATEX(value, format, unit of a bare number, unit to show, language): text that reads as a quantity counts as
/// one.
Value formatIn(Call& call) {
  const Value given = call.value(0);
  const std::string format = call.text(1), source = call.text(2), target = call.text(3);
  const int language = call.whole(4, defaultLanguage);
  Maybe<Value> quantity = given.asQuantity();
  if (!quantity || quantity->kind() != ValueKind::Number) return Value::text(formatValue(given, format, language));
  if (!trimmed(source).empty()) {
    const Maybe<Unit> unit = unitOfSuffix(trimmed(source));
    if (!unit) return call.fail(ErrorCode::Value);
    if (quantity->unit() == Unit::None) quantity = Value::number(toInternal(quantity->internal(), *unit), *unit);
  }
  if (!trimmed(target).empty()) {
    const Maybe<Unit> unit = unitOfSuffix(trimmed(target));
    if (!unit) return call.fail(ErrorCode::Value);
    if (quantity->unit() == Unit::None) {
      quantity = Value::number(toInternal(quantity->internal(), *unit), *unit);
    } else if (dimensionOf(quantity->unit()) == dimensionOf(*unit)) {
      quantity = Value::number(quantity->internal(), *unit);
    } else {
      return call.fail(ErrorCode::Value);
    }
  }
  return Value::text(formatValue(*quantity, format, language));
}

Value formatOfField(Call& call) {
  const int number = call.whole(0);
  const std::string_view format = fieldFormat(number);
  return Value::text(format.empty() ? "esc(" + std::to_string(number) + ")" : std::string(format));
}

constexpr FunctionRow rows[] = {
    {"LEFT", [](Call& c) { return start(c, left); }},
    {"RIGHT", [](Call& c) { return start(c, right); }},
    {"MID", middle},
    {"LEN", [](Call& c) { return Value::number(static_cast<double>(lengthOf(c.text(0)))); }},
    {"FIND", find},
    {"REPLACE", replacePart},
    {"REPT", repeat},
    {"SUBSTITUTE", substitute},
    {"TRIM", [](Call& c) { return Value::text(collapsed(c.text(0))); }},
    {"LOWER", [](Call& c) { return Value::text(lowerCase(c.text(0))); }},
    {"UPPER", [](Call& c) { return Value::text(upperCase(c.text(0))); }},
    {"CHAR", [](Call& c) { return character(c, 255); }},
    {"UNICHAR", [](Call& c) { return character(c, 65535); }},
    {"STRSAME", [](Call& c) { return same(c, c.truth(2)); }},
    {"STRSAMEEX", [](Call& c) { return same(c, c.whole(3) & 1); }},
    {"INDEX", itemOfList},
    {"LOOKUP", placeInList},
    {"FORMAT", format},
    {"FORMATEX", formatIn},
    {"FIELDPICTURE", formatOfField},
    {"LISTSEP", [](Call& c) { return Value::text(c.context().listSeparator()); }, AsksHost},
    {"DECIMALSEP", [](Call& c) { return Value::text(c.context().decimalSeparator()); }, AsksHost},
};

}  // namespace

std::span<const FunctionRow> textFunctions() { return rows; }

}  // namespace quorvel::host
