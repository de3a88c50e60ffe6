#include "formats/common/row_types.h"

namespace quorvel::formats {
namespace {

using host::RowTag;

struct RowType {
  RowTag tag;
  std::string_view name;
};

constexpr RowType rowTypes[] = {
    {RowTag::MoveTo, "MoveTo"},
    {RowTag::LineTo, "LineTo"},
    {RowTag::ArcTo, "ArcTo"},
    {RowTag::InfiniteLine, "InfiniteLine"},
    {RowTag::Ellipse, "Ellipse"},
    {RowTag::EllipticalArcTo, "EllipticalArcTo"},
    {RowTag::SplineStart, "SplineStart"},
    {RowTag::SplineKnot, "SplineKnot"},
    {RowTag::PolylineTo, "PolylineTo"},
    {RowTag::NurbsTo, "NURBSTo"},
    {RowTag::RelCubBezTo, "RelCubBezTo"},
    {RowTag::RelQuadBezTo, "RelQuadBezTo"},
    {RowTag::RelMoveTo, "RelMoveTo"},
    {RowTag::RelLineTo, "RelLineTo"},
    {RowTag::RelEllipticalArcTo, "RelEllipticalArcTo"},
};

}  // namespace

std::uint8_t rowTagOf(std::string_view fileName) {
  for (const RowType& type : rowTypes) {
    if (type.name == fileName) return numberOf(type.tag);
  }
  return 0;
}

std::string_view rowTypeName(std::uint8_t tag) {
  for (const RowType& type : rowTypes) {
    if (numberOf(type.tag) == tag) return type.name;
  }
  return {};
}

}  // namespace quorvel::formats
