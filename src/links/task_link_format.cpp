#include "links/task_link_format.h"

#include <algorithm>
#include <array>

#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"
#include "schema/time_units.h"

namespace quorvel::addin {
namespace {

/// What differs from unit to unit in the pieces before the abbreviation. Drawings are compared by their text, so the
/// blanks and commas of the first release are kept.
struct Spelling {
  std::string_view joint = "&";  ///< after the description in DescriptionAndTime
  char decimalPoint = '.';       ///< in TimeOnly
  int decimalsAboveZero = 2;     ///< in TimeOnlyAboveZero
};

/// By place in the table of units: Seconds to Weeks.
constexpr std::array<Spelling, schema::timeUnits.size()> spellings{
    {{}, {" & ", ','}, {" &", ','}, {"&", ','}, {"&", '.', 3}}};

const std::string& descriptionReference() {
  static const std::string text = "\"'\"&" + std::string(schema::taskLinkCells::quotedDescription);
  return text;
}

/// Closes the bracket around the time, the quoted text and the string constant.
constexpr std::string_view afterAbbreviation = ")'\"";

/// "'"&User.Single_TaskLink&"' ' ('0.##'" or, of the time alone, "' ('0.##'".
std::string pieceFor(std::size_t unit, LinkFormat format) {
  const Spelling& spelling = spellings[unit];
  const std::string number(schema::timeUnits[unit].format);
  switch (format) {
    case LinkFormat::DescriptionAndTime:
      return descriptionReference() + std::string(spelling.joint) + "\"' ' ('" + number + "'";
    case LinkFormat::DescriptionAndTimeAboveZero:
      return descriptionReference() + "&\"' ' ('" + number + "'";
    case LinkFormat::TimeOnly:
      return "\"' ('" + replaceAll(number, ".", std::string_view(&spelling.decimalPoint, 1)) + "'";
    default:
      return "\"' ('0." + std::string(static_cast<std::size_t>(spelling.decimalsAboveZero), '#') + "'";
  }
}

std::string ifUnitIs(std::string_view function, const schema::TimeUnit& unit, const std::string& spr) {
  return "IF(" + std::string(function) + "(" + std::string(schema::timeCells::unit) + spr + "\"" +
         std::string(unit.name) + "\")" + spr;
}

std::string formatWithTime(LinkFormat format, const FormatParts& parts) {
  const std::string& spr = parts.separator;
  std::string formula;
  for (std::size_t i = 0; i < std::min(parts.units.size(), parts.abbreviations.size()); ++i) {
    const schema::TimeUnit* const unit = schema::timeUnitNamed(parts.units[i]);
    if (!unit) continue;
    const bool isLast = unit == &schema::timeUnits.back();
    if (unit != &schema::timeUnits.front()) formula += spr;
    if (!isLast) formula += ifUnitIs("STRSAME", *unit, spr);
    // It is part of a format's quoted text inside a string constant of a formula.
    const std::string abbreviation = replaceAll(withEscapedApostrophes(parts.abbreviations[i]), "\"", "\"\"");
    formula += pieceFor(static_cast<std::size_t>(unit - schema::timeUnits.data()), format) + abbreviation +
               std::string(afterAbbreviation);
    if (isLast) formula += "))))";
  }
  return formula;
}

/// A format that shows no time; the results are in the order Seconds to Weeks.
std::string formatWithoutTime(const std::array<std::string, 5>& results, const std::string& spr) {
  std::string formula = "= ";
  for (std::size_t i = 0; i < 4; ++i) {
    formula += ifUnitIs("StrSame", schema::timeUnits[i], spr) + results[i] + spr;
  }
  return formula + results[4] + "))))";
}

}  // namespace

std::string linkFormat(LinkFormat format, const FormatParts& parts) {
  const std::string description = descriptionReference() + R"(&" ' ' ")";
  // The one for hours lacks the last blank.
  const std::string hoursDescription = descriptionReference() + R"(&" ' '")";
  const std::string nothing = R"("")";
  switch (format) {
    case LinkFormat::DescriptionOnly:
      return formatWithoutTime({description, description, hoursDescription, description, description}, parts.separator);
    case LinkFormat::Empty:
      return formatWithoutTime({nothing, nothing, nothing, nothing, nothing}, parts.separator);
    default:
      return formatWithTime(format, parts);
  }
}

bool LinkFormatRule::fits(const Maybe<double>& description, const Maybe<double>& time,
                          const Maybe<double>& timeAboveZero) const {
  if (!(description == showsDescription && time == showsTime)) return false;
  switch (zeroTime) {
    case ZeroTime::Shown:
      return timeAboveZero == 0 || timeAboveZero == 2;
    case ZeroTime::Hidden:
      return timeAboveZero == 1 || timeAboveZero == 2;
    case ZeroTime::Any:
      break;
  }
  return true;
}

std::span<const LinkFormatRule> linkFormatRules() {
  using enum LinkFormat;
  using Zero = LinkFormatRule::ZeroTime;
  static constexpr std::array<LinkFormatRule, 6> rules{{
      {1, 1, Zero::Shown, false, DescriptionAndTime, DescriptionAndTime},
      {0, 1, Zero::Shown, false, TimeOnly, TimeOnly},
      {1, 0, Zero::Any, false, DescriptionOnly, DescriptionOnly},
      {0, 0, Zero::Any, false, Empty, Empty},
      {1, 1, Zero::Hidden, true, DescriptionAndTimeAboveZero, DescriptionOnly},
      {0, 1, Zero::Hidden, true, TimeOnlyAboveZero, Empty},
  }};
  return rules;
}

}  // namespace quorvel::addin
