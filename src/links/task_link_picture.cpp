#include "links/task_link_picture.h"

#include <algorithm>
#include <array>

#include "base/basic_text.h"
#include "base/text.h"
#include "schema/cells.h"
#include "schema/time_units.h"

namespace quorvel::addin {
namespace {

/// What differs from unit to unit in the pieces before the abbreviation. Drawings are compared by their text, so the
/// pieces keep blanks and commas as the first release wrote them.
struct Spelling {
  std::string_view joint = "&";  ///< behind the description in DescriptionAndTime
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

/// Closes the bracket around the time, the quoted text and the string.
constexpr std::string_view behindAbbreviation = ")'\"";

/// "'"&User.Single_TaskLink&"' ' ('0.##'" or, of the time alone, "' ('0.##'".
std::string pieceFor(std::size_t unit, LinkPicture picture) {
  const Spelling& spelling = spellings[unit];
  const std::string format(schema::timeUnits[unit].format);
  switch (picture) {
    case LinkPicture::DescriptionAndTime:
      return descriptionReference() + std::string(spelling.joint) + "\"' ' ('" + format + "'";
    case LinkPicture::DescriptionAndTimeAboveZero:
      return descriptionReference() + "&\"' ' ('" + format + "'";
    case LinkPicture::TimeOnly:
      return "\"' ('" + replaceAll(format, ".", std::string_view(&spelling.decimalPoint, 1)) + "'";
    default:
      return "\"' ('0." + std::string(static_cast<std::size_t>(spelling.decimalsAboveZero), '#') + "'";
  }
}

std::string ifUnitIs(std::string_view function, const schema::TimeUnit& unit, const std::string& spr) {
  return "IF(" + std::string(function) + "(" + std::string(schema::timeCells::unit) + spr + "\"" +
         std::string(unit.name) + "\")" + spr;
}

std::string pictureWithTime(LinkPicture picture, const PictureParts& parts) {
  const std::string& spr = parts.separator;
  std::string formula;
  for (std::size_t i = 0; i < std::min(parts.units.size(), parts.abbreviations.size()); ++i) {
    const schema::TimeUnit* const unit = schema::timeUnitNamed(parts.units[i]);
    if (!unit) continue;
    const bool isLast = unit == &schema::timeUnits.back();
    if (unit != &schema::timeUnits.front()) formula += spr;
    if (!isLast) formula += ifUnitIs("STRSAME", *unit, spr);
    // It stands in a picture's quoted text inside a formula's string.
    const std::string abbreviation = replaceAll(withEscapedApostrophes(parts.abbreviations[i]), "\"", "\"\"");
    formula += pieceFor(static_cast<std::size_t>(unit - schema::timeUnits.data()), picture) + abbreviation +
               std::string(behindAbbreviation);
    if (isLast) formula += "))))";
  }
  return formula;
}

/// The frame of the pictures that show no time; the results stand in the order Seconds to Weeks.
std::string pictureWithoutTime(const std::array<std::string, 5>& results, const std::string& spr) {
  std::string formula = "= ";
  for (std::size_t i = 0; i < 4; ++i) {
    formula += ifUnitIs("StrSame", schema::timeUnits[i], spr) + results[i] + spr;
  }
  return formula + results[4] + "))))";
}

}  // namespace

std::string linkPicture(LinkPicture picture, const PictureParts& parts) {
  const std::string description = descriptionReference() + R"(&" ' ' ")";
  // The one for hours lacks the last blank.
  const std::string hoursDescription = descriptionReference() + R"(&" ' '")";
  const std::string nothing = R"("")";
  switch (picture) {
    case LinkPicture::DescriptionOnly:
      return pictureWithoutTime({description, description, hoursDescription, description, description},
                                parts.separator);
    case LinkPicture::Empty:
      return pictureWithoutTime({nothing, nothing, nothing, nothing, nothing}, parts.separator);
    default:
      return pictureWithTime(picture, parts);
  }
}

bool LinkPictureRule::fits(const Maybe<double>& description, const Maybe<double>& time,
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

std::span<const LinkPictureRule> linkPictureRules() {
  using enum LinkPicture;
  using Zero = LinkPictureRule::ZeroTime;
  static constexpr std::array<LinkPictureRule, 6> rules{{
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
