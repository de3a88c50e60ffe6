// Parts of a package that the single-file format has no words for: themes, data recordsets, validation. They stand in
// the file in an element that older programs pass over, so that the way through this format loses none of them.
#pragma once

#include <string>
#include <unordered_set>

#include "formats/common/carried.h"
#include "formats/common/left_out.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"

namespace quorvel::formats::vdx {

/// Writes the parts that the document part leads to and what hangs at those, except `said`, the keys of those that
/// stand in elements of their own. Macros and signatures stay out.
void writePackageParts(XmlWriter& writer, const CarriedPackage& package, const std::unordered_set<std::string>& said);

/// Notes the parts of which nothing is written.
void addPartsLeftOut(LeftOut& leftOut, const CarriedPackage& package, const std::unordered_set<std::string>& said);

/// Takes such an element into the document's package, made when missing. False for other elements and for names that a
/// package cannot have.
bool readPackagePart(CarriedDocument& document, pugi::xml_node node);

}  // namespace quorvel::formats::vdx
