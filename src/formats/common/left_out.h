// What a save in another format or kind of file leaves out, in words for a person.
#pragma once

#include <string>
#include <vector>

#include "formats/common/carried.h"

namespace quorvel::formats {

/// Each thing once, in words for a sentence: "the macros", "the preview picture".
using LeftOut = std::vector<std::string>;

void addLeftOut(LeftOut& leftOut, const std::string& what);
/// Notes a part of the package by what it is.
void addPart(LeftOut& leftOut, const CarriedPackage& package, const CarriedPart& part);
/// Notes what a single-file drawing said in elements of its own that packages have no place for.
void addOlderElements(LeftOut& leftOut, const CarriedDocument& document);

bool isMacros(const CarriedPart& part);
bool isSignature(const CarriedPart& part);

}  // namespace quorvel::formats
