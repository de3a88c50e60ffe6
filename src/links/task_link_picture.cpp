#include "links/task_link_picture.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace quorvel::addin {
namespace {

/// The pieces that stand before the abbreviation, by unit.
struct UnitPieces {
  std::string_view unit;
  std::string_view descriptionAndTime;
  std::string_view descriptionAndTimeAboveZero;
  std::string_view timeOnly;
  std::string_view timeOnlyAboveZero;
};

// clang-format off
constexpr std::array<UnitPieces, 5> unitPieces{{
    {"Seconds", R"("'"&User.Single_TaskLink&"' ' ('0.##')",   R"("'"&User.Single_TaskLink&"' ' ('0.##')",
                R"("' ('0.##')",                              R"("' ('0.##')"},
    {"Minutes", R"("'"&User.Single_TaskLink & "' ' ('0.##')", R"("'"&User.Single_TaskLink&"' ' ('0.##')",
                R"("' ('0,##')",                              R"("' ('0.##')"},
    {"Hours",   R"("'"&User.Single_TaskLink &"' ' ('0.##')",  R"("'"&User.Single_TaskLink&"' ' ('0.##')",
                R"("' ('0,##')",                              R"("' ('0.##')"},
    {"Days",    R"("'"&User.Single_TaskLink&"' ' ('0.###')",  R"("'"&User.Single_TaskLink&"' ' ('0.###')",
                R"("' ('0,###')",                             R"("' ('0.##')"},
    {"Weeks",   R"("'"&User.Single_TaskLink&"' ' ('0.###')",  R"("'"&User.Single_TaskLink&"' ' ('0.###')",
                R"("' ('0.###')",                             R"("' ('0.###')"},
}};
// clang-format on

/// Closes the bracket around the time, the quoted text and the string.
constexpr std::string_view behindAbbreviation = ")'\"";

std::string_view pieceFor(const UnitPieces& pieces, LinkPicture picture) {
  switch (picture) {
    case LinkPicture::DescriptionAndTime:
      return pieces.descriptionAndTime;
    case LinkPicture::DescriptionAndTimeAboveZero:
      return pieces.descriptionAndTimeAboveZero;
    case LinkPicture::TimeOnly:
      return pieces.timeOnly;
    default:
      return pieces.timeOnlyAboveZero;
  }
}

std::string pictureWithTime(LinkPicture picture, const PictureParts& parts) {
  const std::string& spr = parts.separator;
  std::string formula;
  for (std::size_t i = 0; i < std::min(parts.units.size(), parts.abbreviations.size()); ++i) {
    const std::string& unit = parts.units[i];
    const auto pieces = std::ranges::find(unitPieces, unit, &UnitPieces::unit);
    if (pieces == unitPieces.end()) continue;
    if (unit != "Seconds") formula += spr;
    if (unit != "Weeks") formula += "IF(STRSAME(Prop.Time_Units" + spr + "\"" + unit + "\")" + spr;
    // It stands in a picture's quoted text inside a formula's string.
    const std::string abbreviation = replaceAll(withEscapedApostrophes(parts.abbreviations[i]), "\"", "\"\"");
    formula += std::string(pieceFor(*pieces, picture)) + abbreviation + std::string(behindAbbreviation);
    if (unit == "Weeks") formula += "))))";
  }
  return formula;
}

/// The frame of the pictures that show no time; the results stand in the order Seconds to Weeks.
std::string pictureWithoutTime(const std::array<std::string_view, 5>& results, const std::string& spr) {
  std::string formula = "= ";
  for (std::size_t i = 0; i < 4; ++i) {
    formula += "IF(StrSame(Prop.Time_Units" + spr + "\"" + std::string(unitPieces[i].unit) + "\")" + spr;
    formula += std::string(results[i]) + spr;
  }
  return formula + std::string(results[4]) + "))))";
}

}  // namespace

std::string linkPicture(LinkPicture picture, const PictureParts& parts) {
  constexpr std::string_view description = R"("'"&User.Single_TaskLink&" ' ' ")";
  // The one for hours lacks the last blank.
  constexpr std::string_view hoursDescription = R"("'"&User.Single_TaskLink&" ' '")";
  constexpr std::string_view nothing = R"("")";
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

std::string withEscapedApostrophes(std::string_view description) { return replaceAll(description, "'", "'\\''"); }

}  // namespace quorvel::addin
