// A drawing's file as text in which two files that mean the same read the same, for comparing before and after a
// save.
#pragma once

#include <string>

#include "base/maybe.h"

namespace quorvel::formats {

struct NormalFormOptions {
  /// Leaves out what every save changes: the times of saving and editing.
  bool withoutTimes = true;
};

/// One line for each element, attributes sorted, cells sorted by name, relationships by what they lead to instead of by
/// number, parts in the order of their names; parts that are no XML by length and checksum. A single-file drawing is
/// one part. Nothing for a file that is neither.
Maybe<std::string> normalForm(const std::string& fileName, const NormalFormOptions& options = {});

/// The first lines in which two normal forms differ, for a message; empty when they are equal.
std::string firstDifference(const std::string& before, const std::string& after);

}  // namespace quorvel::formats
