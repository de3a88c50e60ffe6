// The format picture that makes a Task Link's text, as formula text; pure composition, no host.
//
// A link shows one text field whose value is the time between its Tasks. The field's picture carries description and
// abbreviation, for all five units at once, so that a change of the unit alone needs no work by the program. Drawings
// hold these texts and later code cuts pieces out of them by position: every blank and comma is as it must be, the
// commas in place of decimal points among the time-only pictures included.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/maybe.h"

namespace quorvel::addin {

/// What a picture is put together from.
struct PictureParts {
  std::vector<std::string> units;          ///< as `parse` gives them, in the document's order
  std::vector<std::string> abbreviations;  ///< one to one with the units
  std::string separator;                   ///< between the arguments of a formula
};

enum class LinkPicture {
  DescriptionAndTime,           ///< whatever the time is
  DescriptionAndTimeAboveZero,  ///< for a time above zero
  TimeOnly,
  TimeOnlyAboveZero,
  DescriptionOnly,
  Empty,
};

/// The formula for Fields.Format[1]. A unit without abbreviation is left out, which the host then refuses.
std::string linkPicture(LinkPicture picture, const PictureParts& parts);

/// One line of the table that decides which picture a link gets.
struct LinkPictureRule {
  enum class ZeroTime { Any, Shown, Hidden };

  int showsDescription;  ///< User.TaskLink_txt_Visible
  int showsTime;         ///< User.TaskLink_Visible
  ZeroTime zeroTime;     ///< User.TimegreaterThanzero: 0 shows a time of zero, 1 hides it, 2 fits both
  bool testsTime;        ///< then `picture` is for a time above zero and `otherwise` for any other
  LinkPicture picture;
  LinkPicture otherwise;

  /// A switch that can't be read fits no rule that tests it.
  bool fits(const Maybe<double>& description, const Maybe<double>& time, const Maybe<double>& timeAboveZero) const;
};

/// In the order in which they are tried. More than one may fit; the last one that does stands.
std::span<const LinkPictureRule> linkPictureRules();

}  // namespace quorvel::addin
