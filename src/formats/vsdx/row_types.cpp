#include "formats/vsdx/row_types.h"

namespace quorvel::formats {
namespace {

struct RowType {
  std::uint8_t tag;
  std::string_view name;
};

constexpr RowType rowTypes[] = {
    {138, "MoveTo"},       {139, "LineTo"},      {140, "ArcTo"},
    {141, "InfiniteLine"}, {143, "Ellipse"},     {144, "EllipticalArcTo"},
    {165, "SplineStart"},  {166, "SplineKnot"},  {193, "PolylineTo"},
    {195, "NURBSTo"},      {236, "RelCubBezTo"}, {237, "RelQuadBezTo"},
    {238, "RelMoveTo"},    {239, "RelLineTo"},   {240, "RelEllipticalArcTo"},
};

}  // namespace

std::uint8_t rowTagOf(std::string_view fileName) {
  for (const RowType& type : rowTypes) {
    if (type.name == fileName) return type.tag;
  }
  return 0;
}

std::string_view rowTypeName(std::uint8_t tag) {
  for (const RowType& type : rowTypes) {
    if (type.tag == tag) return type.name;
  }
  return {};
}

bool countsInShares(std::uint8_t tag) { return rowTypeName(tag).starts_with("Rel"); }

}  // namespace quorvel::formats
