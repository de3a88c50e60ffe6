// The published numbers of the row types of Geometry sections.
#pragma once

#include <cstdint>

namespace quorvel::host {

enum class RowTag : std::uint8_t {
  Component = 137,
  MoveTo = 138,
  LineTo = 139,
  ArcTo = 140,
  InfiniteLine = 141,
  Ellipse = 143,
  EllipticalArcTo = 144,
  SplineStart = 165,
  SplineKnot = 166,
  PolylineTo = 193,
  NurbsTo = 195,
  RelCubBezTo = 236,
  RelQuadBezTo = 237,
  RelMoveTo = 238,
  RelLineTo = 239,
  RelEllipticalArcTo = 240,
};

constexpr std::uint8_t numberOf(RowTag tag) { return static_cast<std::uint8_t>(tag); }
/// True for the rows that hold a vertex: all but Component.
constexpr bool isVertexTag(int tag) {
  return (tag >= 138 && tag <= 141) || tag == 143 || tag == 144 || tag == 165 || tag == 166 || tag == 193 ||
         tag == 195 || (tag >= 236 && tag <= 240);
}
/// True for rows whose coordinates are shares of the shape's width and height.
constexpr bool isRelative(RowTag tag) { return tag >= RowTag::RelCubBezTo && tag <= RowTag::RelEllipticalArcTo; }

}  // namespace quorvel::host
