// What a formula gives: a number with its unit, a text, a truth value, a date, a duration, a point, a colour or an
// error.
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"
#include "base/shared_text.h"
#include "host/formula/units.h"

namespace quorvel::host {

enum class ValueKind : std::uint8_t { Number, Text, Boolean, Date, Point, Colour, Error };

enum class ErrorCode : std::uint8_t { None, Value, DivisionByZero, Number, Reference, Name, NotAvailable, Circle };

/// A small immutable value. Numbers are kept in internal units beside the unit they were given in; a duration is a
/// Number whose unit is one of elapsed time, internal unit days. A date is days since 1899-12-30.
class Value {
 public:
  Value() = default;  ///< the number 0
  static Value number(double internal, Unit unit = Unit::None);
  static Value text(std::string_view text);
  static Value boolean(bool truth);
  static Value date(double days);
  static Value point(double x, double y);
  /// 0xRRGGBB.
  static Value colour(std::uint32_t rgb);
  static Value error(ErrorCode code);

  ValueKind kind() const { return kind_; }
  Unit unit() const { return unit_; }
  bool isError() const { return kind_ == ValueKind::Error; }
  bool isText() const { return kind_ == ValueKind::Text; }
  ErrorCode errorCode() const {
    return isError() ? static_cast<ErrorCode>(static_cast<int>(number_)) : ErrorCode::None;
  }
  /// Internal number without conversion: 1 or 0 for a truth value, x of a point; 0 for text and errors.
  double internal() const { return kind_ == ValueKind::Error ? 0 : number_; }
  double y() const { return second_; }
  std::string_view textView() const { return text_.view(); }

  /// The value as a number in internal units; text counts when it reads as a quantity ("2 eh.", "5 in"). Fails for
  /// other text and for errors.
  Maybe<double> asNumber() const;
  /// The same with its unit, for text as well.
  Maybe<Value> asQuantity() const;
  /// In the given published units code; 0 gives internal units for dimensioned values.
  Maybe<double> asNumberIn(int unitsCode) const;
  bool asBoolean() const;  ///< false for text and errors
  /// As Cell.ResultStr shows it: the shortest number and its suffix ("0.5 in.", "5 em.", "45 deg."), "TRUE"/"FALSE",
  /// text unchanged, "#REF!" and its like for errors. `unitsCode` 0: the value's own unit.
  std::string asText(int unitsCode = 0) const;

  /// Same kind, unit and content. Numbers are compared exactly: an unchanged value stops recalculation.
  friend bool operator==(const Value&, const Value&) = default;

 private:
  double number_ = 0;
  double second_ = 0;
  SharedText text_;
  ValueKind kind_ = ValueKind::Number;
  Unit unit_ = Unit::None;
};

/// Reads "5 em.", "2.5in", "-3", "100%", "90 deg" as a quantity; blanks around and before the suffix allowed. Nothing
/// for other text.
Maybe<Value> parseQuantity(std::string_view text);

std::string_view errorText(ErrorCode code);  ///< "#VALUE!", "#DIV/0!", "#NUM!", "#REF!", "#NAME?", "#N/A", "#CIRCLE!"
/// The error of such a text; None for others.
ErrorCode errorOfText(std::string_view text);

}  // namespace quorvel::host
