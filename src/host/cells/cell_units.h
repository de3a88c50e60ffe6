// The kinds of cells: what a number in one means, and which style sheet it comes from.
#pragma once

#include <cstdint>

namespace quorvel::host {

/// What a bare number in the cell means, and how its result is shown.
enum class CellUnits : std::uint8_t { Number, Length, Angle, Boolean, Text, Date, Colour };

/// The style sheet from which a shape takes the cell when neither it nor its master holds it.
enum class StyleSource : std::uint8_t { None, Line, Fill, Text };

}  // namespace quorvel::host
