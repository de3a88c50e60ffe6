#include "formats/common/cell_text.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

#include "base/text.h"
#include "host/formula/number_text.h"

namespace quorvel::formats {
namespace {

using host::CellDefinition;
using host::CellKey;
using host::CellUnits;
using host::SectionNumber;
using host::Unit;
using host::Value;
using host::ValueKind;

Maybe<double> parseNumber(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+')) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || text.empty() || !host::isRepresentable(number))
    return {};
  return number;
}

Maybe<Value> parseColour(std::string_view text) {
  if (text.size() != 7 || text.front() != '#') return {};
  std::uint32_t rgb = 0;
  const auto [end, error] = std::from_chars(text.data() + 1, text.data() + 7, rgb, 16);
  if (error != std::errc() || end != text.data() + 7) return {};
  return Value::colour(rgb);
}

Maybe<Value> parsePoint(std::string_view text) {
  if (!startsWithIgnoringCase(text, "PNT(") || !text.ends_with(')')) return {};
  text = text.substr(4, text.size() - 5);
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) return {};
  const Maybe<double> x = parseNumber(text.substr(0, comma)), y = parseNumber(text.substr(comma + 1));
  if (!x || !y) return {};
  return Value::point(*x, *y);
}

CellUnits unitsOf(const CellDefinition* definition) { return definition ? definition->units : CellUnits::Number; }

Value readPlainValue(CellUnits units, std::string_view text) {
  if (units == CellUnits::Text) return Value::text(text);
  if (const Maybe<double> number = parseNumber(text)) {
    if (units == CellUnits::Date) return Value::date(*number);
    // Files hold radians; a bare number typed into the cell would mean degrees.
    if (units == CellUnits::Angle && *number != 0) return Value::number(*number, Unit::Radians);
    return Value::number(*number);
  }
  if (units == CellUnits::Colour) {
    if (const Maybe<Value> colour = parseColour(text)) return *colour;
  }
  return Value::text(text);
}

/// Cells that may hold anything say so when it is text; in the others text is what their kind is.
bool marksText(const CellKey& key) {
  switch (key.section) {
    case SectionNumber::Scratch:
      return key.column >= 2;
    case SectionNumber::User:
    case SectionNumber::Property:
    case SectionNumber::TextField:
      return true;
    default:
      return false;
  }
}

std::string_view unitOfText(const CellKey& key, const CellDefinition* definition, std::string_view text) {
  if (unitsOf(definition) == CellUnits::Text) return {};
  return marksText(key) || parseNumber(text) ? "STR" : "";
}

std::string_view withoutEqualsSign(std::string_view formula) {
  formula = trimmed(formula);
  if (formula.starts_with('=')) formula.remove_prefix(1);
  return trimmed(formula);
}

}  // namespace

void appendNumber(std::string& out, double number) {
  if (number == 0) {
    out += std::signbit(number) ? "-0" : "0";
    return;
  }
  std::array<char, 64> buffer;
  char* const begin = buffer.data();
  char* const limit = begin + buffer.size();
  if (std::fabs(number) < 1e15 && number == std::trunc(number)) {
    out.append(begin, std::to_chars(begin, limit, static_cast<long long>(number)).ptr);
    return;
  }
  const auto scientific = std::to_chars(begin, limit, number, std::chars_format::scientific);
  std::string_view text(begin, static_cast<std::size_t>(scientific.ptr - begin));
  const std::size_t e = text.find('e');
  int exponent = 0;
  std::from_chars(text.data() + e + (text[e + 1] == '+' ? 2 : 1), text.data() + text.size(), exponent);
  text = text.substr(0, e);
  if (exponent < -4 || exponent > 15) {
    out.append(text).append("E").append(std::to_string(exponent));
    return;
  }
  // The shortest digits are found once; placing the point among them is much quicker than finding them again.
  if (text.front() == '-') {
    out += '-';
    text.remove_prefix(1);
  }
  const std::string_view first = text.substr(0, 1), rest = text.size() > 2 ? text.substr(2) : std::string_view();
  if (exponent < 0) {
    out.append("0.").append(static_cast<std::size_t>(-exponent - 1), '0').append(first).append(rest);
    return;
  }
  const std::size_t whole = std::min(static_cast<std::size_t>(exponent), rest.size());
  out.append(first).append(rest.substr(0, whole)).append(static_cast<std::size_t>(exponent) - whole, '0');
  if (rest.size() > whole) out.append(".").append(rest.substr(whole));
}

Maybe<double> parseDateText(std::string_view text) {
  int part[6] = {0, 1, 1, 0, 0, 0};
  const char* at = text.data();
  const char* const end = at + text.size();
  constexpr char separators[] = {'-', '-', 'T', ':', ':'};
  for (int i = 0; i < 6; ++i) {
    const auto [next, error] = std::from_chars(at, end, part[i]);
    if (error != std::errc()) return {};
    at = next;
    if (i >= 2 && at == end) break;
    if (i == 5) break;
    if (at == end || *at != separators[i]) return {};
    ++at;
  }
  double fraction = 0;
  if (at != end && *at == '.') {
    const auto [next, error] = std::from_chars(at, end, fraction);
    if (error != std::errc()) return {};
    at = next;
  }
  if (at != end && *at == 'Z') ++at;
  if (at != end) return {};
  const std::chrono::year_month_day day{std::chrono::year(part[0]), std::chrono::month(static_cast<unsigned>(part[1])),
                                        std::chrono::day(static_cast<unsigned>(part[2]))};
  if (part[0] < 0 || part[0] > 9999 || !day.ok() || part[3] < 0 || part[3] > 24 || part[4] < 0 || part[4] > 59 ||
      part[5] < 0 || part[5] > 60)
    return {};
  using namespace std::chrono;
  const auto days = sys_days(day) - sys_days(year(1899) / December / 30);
  return days.count() + ((part[3] * 60 + part[4]) * 60 + part[5] + fraction) / 86400.0;
}

std::string dateText(double days) {
  using namespace std::chrono;
  if (!(days > -600'000 && days < 2'958'466)) days = 0;
  const auto seconds = static_cast<long long>(std::llround(days * 86400.0));
  const long long whole = seconds >= 0 ? seconds / 86400 : -((-seconds + 86399) / 86400);
  const long long rest = seconds - whole * 86400;
  const year_month_day day{sys_days(year(1899) / December / 30) + std::chrono::days(whole)};
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()), static_cast<int>(rest / 3600),
                static_cast<int>(rest / 60 % 60), static_cast<int>(rest % 60));
  return text;
}

namespace {

/// A length without a unit is one in the drawing's own units. A negative number that means a share of the
/// letters' size is none.
Value withUnitOfCell(const CellKey& key, const CellDefinition* definition, const Value& value) {
  if (unitsOf(definition) != CellUnits::Length || value.kind() != ValueKind::Number || value.unit() != Unit::None)
    return value;
  if (key.section == SectionNumber::Paragraph && value.internal() < 0) return value;
  return Value::number(value.internal(), Unit::Drawing);
}

Value readTyped(const CellDefinition* definition, const CellAttributes& text) {
  if (text.hasError && (text.value == "0" || text.value.empty())) {
    // With the last good value, a drawing looks more like what its author saw than with an error.
    if (const host::ErrorCode code = host::errorOfText(text.error); code != host::ErrorCode::None)
      return Value::error(code);
  }
  if (text.unit.empty()) return readPlainValue(unitsOf(definition), text.value);
  if (text.unit == "STR" || text.unit == "GUID") return Value::text(text.value);
  if (text.unit == "BOOL") {
    if (text.value == "1" || text.value == "0") return Value::boolean(text.value == "1");
    return readPlainValue(CellUnits::Number, text.value);
  }
  if (text.unit == "COLOR") return readPlainValue(CellUnits::Colour, text.value);
  if (text.unit == "DATE") {
    if (const Maybe<double> days = parseDateText(text.value)) return Value::date(*days);
    return readPlainValue(CellUnits::Date, text.value);
  }
  if (text.unit == "PNT") {
    if (const Maybe<Value> point = parsePoint(text.value)) return *point;
  }
  const Maybe<double> number = parseNumber(text.value);
  if (!number) return Value::text(text.value);
  return Value::number(*number, host::unitOfFileName(text.unit).or_(Unit::None));
}

}  // namespace

Value readValue(const CellKey& key, const CellDefinition* definition, const CellAttributes& text) {
  return withUnitOfCell(key, definition, readTyped(definition, text));
}

host::Cell readCell(const CellKey& key, const CellDefinition* definition, const CellAttributes& text,
                    host::FormulaPool& formulas, bool& formulaIsBroken) {
  host::Cell cell;
  cell.value = readValue(key, definition, text);
  if (text.hasError) cell.fileError = host::errorOfText(text.error);
  formulaIsBroken = false;
  if (text.hasFormula) {
    if (text.formula == noFormulaText) {
      cell.noFormula = true;
    } else if (text.formula == inheritedText) {
      cell.inheritsFormula = true;
    } else {
      host::FormulaPtr formula = formulas.get(text.formula);
      formulaIsBroken = !formula;
      if (formula && !text.hasValue && formula->constant()) cell.value = *formula->constant();
      const bool isItsValue = formula && formula->constant() && host::formulaText(cell) == formula->text();
      if (!isItsValue) cell.formula = std::move(formula);
    }
  }
  return cell;
}

CarriedCell carriedCell(host::Column column, const CellAttributes& text, bool formulaIsBroken) {
  CarriedCell carry;
  carry.column = column;
  carry.hasValue = text.hasValue;
  carry.hasUnit = text.hasUnit;
  carry.hasFormula = text.hasFormula;
  carry.hasError = text.hasError;
  carry.value = text.value;
  carry.unit = text.unit;
  carry.formula = text.formula;
  carry.error = text.error;
  carry.formulaIsBroken = formulaIsBroken;
  return carry;
}

bool lacksValue(const CellAttributes& text, const host::Cell& cell) {
  return !text.hasValue && !text.hasError && cell.formula && !cell.formula->constant();
}

void writeCell(const CellKey& key, const CellDefinition* definition, const host::Cell& cell, WrittenCell& written) {
  written.value.clear();
  written.formula.clear();
  written.unit = {};
  written.error = {};
  written.hasFormula = false;

  const Value& value = cell.value;
  switch (value.kind()) {
    case ValueKind::Number:
      appendNumber(written.value, value.internal());
      // In a text cell a bare number would be read as text.
      if (value.unit() == Unit::Drawing && unitsOf(definition) == CellUnits::Length) break;
      if (value.unit() != Unit::None || unitsOf(definition) == CellUnits::Text)
        written.unit = host::fileNameOf(value.unit());
      break;
    case ValueKind::Text:
      written.value = value.textView();
      written.unit = unitOfText(key, definition, value.textView());
      break;
    case ValueKind::Boolean:
      written.value = value.asBoolean() ? "1" : "0";
      written.unit = "BOOL";
      break;
    case ValueKind::Date:
      written.value = dateText(value.internal());
      written.unit = "DATE";
      break;
    case ValueKind::Point:
      written.value = "PNT(";
      appendNumber(written.value, value.internal());
      written.value += ',';
      appendNumber(written.value, value.y());
      written.value += ')';
      written.unit = "PNT";
      break;
    case ValueKind::Colour: {
      char text[16];
      std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(value.internal()) & 0xFFFFFFu);
      written.value = text;
      if (unitsOf(definition) != CellUnits::Colour) written.unit = "COLOR";
      break;
    }
    case ValueKind::Error:
      written.value = "0";
      written.error = host::errorText(value.errorCode());
      break;
  }

  if (cell.noFormula) {
    written.formula = noFormulaText;
    written.hasFormula = true;
  } else if (cell.inheritsFormula) {
    written.formula = inheritedText;
    written.hasFormula = true;
  } else if (cell.formula) {
    // A constant is said by the value alone, unless it was written in a way that the value does not give back.
    if (cell.formula->constant()) {
      host::Cell plain;
      plain.value = value;
      if (host::formulaText(plain) == cell.formula->text()) return;
    }
    written.formula = cell.formula->text();
    written.hasFormula = true;
  }
}

bool saysTheSame(const WrittenCell& written, const CellAttributes& text) {
  return text.hasValue && written.value == text.value && written.hasFormula == text.hasFormula &&
         written.formula == text.formula && written.unit.empty() != text.hasUnit && written.unit == text.unit &&
         written.error.empty() != text.hasError && written.error == text.error;
}

bool stillReads(const CarriedCell& text, const CellKey& key, const CellDefinition* definition, const host::Cell& cell) {
  if (cell.noFormula != (text.formula == noFormulaText) || cell.inheritsFormula != (text.formula == inheritedText))
    return false;
  const bool expectsFormula = text.hasFormula && !text.formulaIsBroken && !cell.noFormula && !cell.inheritsFormula;
  if (expectsFormula) {
    const std::string_view expected = withoutEqualsSign(text.formula);
    if (cell.formula ? cell.formula->text() != expected : host::formulaText(cell) != expected) return false;
  } else if (cell.formula) {
    return false;
  }
  // A value that the file left out is whatever the formula gives.
  if (!text.hasValue) return expectsFormula;
  const Value read = readValue(
      key, definition,
      {text.hasValue, text.hasUnit, text.hasFormula, text.hasError, text.value, text.unit, text.formula, text.error});
  // Rows that count in shares of the size have numbers where others have lengths.
  const bool isShare = cell.value.kind() == ValueKind::Number && cell.value.unit() == Unit::None &&
                       read.kind() == ValueKind::Number && read.unit() == Unit::Drawing;
  return isShare ? cell.value.internal() == read.internal() : cell.value == read;
}

}  // namespace quorvel::formats
