// Parts of a package that the single-file format has no elements for: themes, data recordsets, validation. They are in
// the file in an element that older programs ignore, so that none is lost when a drawing is kept in this format.
#pragma once

#include <string>
#include <unordered_set>

#include "formats/common/carried.h"
#include "formats/common/left_out.h"
#include "formats/package/xml_reading.h"
#include "formats/package/xml_writing.h"

namespace quorvel::formats::vdx {

/// Writes the parts that the document part refers to, and those that these refer to, except `said`, the keys of those
/// that are in elements of their own. Macros and signatures are left out.
void writePackageParts(XmlWriter& writer, const CarriedPackage& package, const std::unordered_set<std::string>& said);

/// Notes the parts of which nothing is written.
void addPartsLeftOut(LeftOut& leftOut, const CarriedPackage& package, const std::unordered_set<std::string>& said);

/// Takes such an element into the document's package, made when missing. False for other elements and for names that a
/// package cannot have.
bool readPackagePart(CarriedDocument& document, pugi::xml_node node);

}  // namespace quorvel::formats::vdx
