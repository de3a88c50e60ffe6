// Composes the number format that makes a Task Link's text, as the text of a formula; makes no host call.
//
// A link shows one text field whose value is the time between its Tasks. The field's format holds description and
// abbreviation, for all five units at once, so a change of the unit alone needs no code. Drawings hold these texts, and
// other code reads parts of them by position: every blank and comma is required, also the commas in place of decimal
// points in some of the time-only formats.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/maybe.h"

namespace quorvel::addin {

/// The parts of a format.
struct FormatParts {
  std::vector<std::string> units;          ///< as `parse` gives them, in the document's order
  std::vector<std::string> abbreviations;  ///< one to one with the units
  std::string separator;                   ///< between the arguments of a formula
};

enum class LinkFormat {
  DescriptionAndTime,           ///< for any time
  DescriptionAndTimeAboveZero,  ///< for a time above zero
  TimeOnly,
  TimeOnlyAboveZero,
  DescriptionOnly,
  Empty,
};

/// The formula for Fields.Format[1]. A unit without abbreviation is left out; the host refuses the result.
std::string linkFormat(LinkFormat format, const FormatParts& parts);

/// One row of the table that decides which format a link gets.
struct LinkFormatRule {
  enum class ZeroTime { Any, Shown, Hidden };

  int showsDescription;  ///< User.TaskLink_txt_Visible
  int showsTime;         ///< User.TaskLink_Visible
  ZeroTime zeroTime;     ///< User.TimegreaterThanzero: 0 shows a time of zero, 1 hides it, 2 fits both
  bool testsTime;        ///< then `format` is for a time above zero and `otherwise` for any other
  LinkFormat format;
  LinkFormat otherwise;

  /// A switch that can't be read fits no rule that tests it.
  bool fits(const Maybe<double>& description, const Maybe<double>& time, const Maybe<double>& timeAboveZero) const;
};

/// In the order in which they are applied. More than one may fit; the last one that fits is the result.
std::span<const LinkFormatRule> linkFormatRules();

}  // namespace quorvel::addin
