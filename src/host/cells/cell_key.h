// The place of a cell in a sheet: section, row, column, in the host's published numbers.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>

#include "host/cells/atom.h"

namespace quorvel::host {

/// Section numbers as published. The n-th Geometry section (1-based) is `Geometry` + n - 1, up to 239.
enum class SectionNumber : std::uint8_t {
  None = 0,
  Object = 1,
  Character = 3,
  Paragraph = 4,
  Tab = 5,
  Scratch = 6,
  Connection = 7,
  TextField = 8,
  Control = 9,
  Geometry = 10,
  LastGeometry = 239,
  Action = 240,
  Layer = 241,
  User = 242,
  Property = 243,
  Hyperlink = 244,
  Reviewer = 245,
  Annotation = 246,
  ActionTag = 247,
  FillGradient = 248,
  LineGradient = 249,
  Other = 250,  ///< sections that we carry without knowing them
};

inline bool isGeometry(SectionNumber section) {
  return section >= SectionNumber::Geometry && section <= SectionNumber::LastGeometry;
}

/// What a row is found by. Named rows go by their name in any letter case, the others by their index in the file, which
/// is also how an instance's row finds the master's row that it overrides. In a Geometry section row 0 is the component
/// row (NoFill, NoLine …) and vertices count from 1; in the object section the row is the published row number.
class RowKey {
 public:
  constexpr RowKey() = default;
  static constexpr RowKey index(std::uint32_t index) { return RowKey(index); }
  static RowKey named(Atom name) { return RowKey(folded(name).value | nameBit); }

  constexpr bool isNamed() const { return (value_ & nameBit) != 0; }
  constexpr std::uint32_t index() const { return value_; }
  /// The folded name; null for an indexed row.
  constexpr Atom name() const { return isNamed() ? Atom{value_ & ~nameBit} : Atom{}; }
  constexpr std::uint32_t packed() const { return value_; }
  static constexpr RowKey fromPacked(std::uint32_t value) { return RowKey(value); }
  friend constexpr auto operator<=>(RowKey, RowKey) = default;

 private:
  static constexpr std::uint32_t nameBit = 0x80000000u;
  constexpr explicit RowKey(std::uint32_t value) : value_(value) {}
  std::uint32_t value_ = 0;
};

/// Published column numbers; names in files that we don't know are numbered from `firstUnknownColumn` up.
using Column = std::uint16_t;
inline constexpr Column firstUnknownColumn = 0x1000;

struct CellKey {
  SectionNumber section = SectionNumber::None;
  RowKey row;
  Column column = 0;

  constexpr std::uint64_t packed() const {
    return (std::uint64_t(section) << 48) | (std::uint64_t(column) << 32) | row.packed();
  }
  static constexpr CellKey fromPacked(std::uint64_t bits) {
    return {SectionNumber((bits >> 48) & 0xFF), RowKey::fromPacked(std::uint32_t(bits)), Column((bits >> 32) & 0xFFFF)};
  }
  constexpr explicit operator bool() const { return section != SectionNumber::None; }
  friend constexpr auto operator<=>(const CellKey&, const CellKey&) = default;
};

}  // namespace quorvel::host

template <>
struct std::hash<quorvel::host::CellKey> {
  std::size_t operator()(const quorvel::host::CellKey& key) const noexcept {
    return std::hash<std::uint64_t>{}(key.packed() * 0x9E3779B97F4A7C15ull);
  }
};
