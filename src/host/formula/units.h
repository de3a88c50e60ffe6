// Units of measure: codes, names, suffixes in formulas, and conversion to and from internal units.
#pragma once

#include <cstdint>
#include <string_view>

#include "base/maybe.h"

namespace quorvel::host {

/// Published units codes. Internal units are inches, radians and days.
enum class Unit : std::uint8_t {
  None = 32,  ///< a plain number
  Percent = 33,
  Acre = 36,
  Hectare = 37,
  Date = 40,
  Duration = 42,  ///< elapsed time, unit left open
  ElapsedWeek = 43,
  ElapsedDay = 44,
  ElapsedHour = 45,
  ElapsedMinute = 46,
  ElapsedSecond = 47,
  Typographic = 48,
  PicasAndPoints = 49,
  Points = 50,
  Picas = 51,
  CicerosAndDidots = 52,
  Didots = 53,
  Ciceros = 54,
  Page = 63,
  Drawing = 64,
  Inches = 65,
  Feet = 66,
  FeetAndInches = 67,
  Miles = 68,
  Centimetres = 69,
  Millimetres = 70,
  Metres = 71,
  Kilometres = 72,
  InchFractions = 73,
  MileFractions = 74,
  Yards = 75,
  NauticalMiles = 76,
  Angle = 80,  ///< drawing's default angle unit
  Degrees = 81,
  DegreesMinutesSeconds = 82,
  Radians = 83,
  Minutes = 84,
  Seconds = 85,
  Guid = 95,
  Currency = 111,
  Nurbs = 138,
  Polyline = 139,
  Point = 225,
  String = 231,
  Boolean = 236,
  Multidimensional = 239,
  Colour = 251,
};

enum class Dimension : std::uint8_t { None, Length, Angle, ElapsedTime, Date, Area, Other };

Dimension dimensionOf(Unit unit);
/// Size of one such unit in internal units; 1 for those without dimension, 0.01 for percent.
double internalPer(Unit unit);
/// Converts a number in internal units; the same number when the dimensions differ or there is none.
double fromInternal(double internal, Unit unit);
double toInternal(double number, Unit unit);

/// The unit of a suffix in a formula or in text, in any letter case, a closing point allowed for elapsed time:
/// "in", "in.", "\"", "ft", "mm", "cm", "pt", "p", "deg", "rad", "%", "es", "em.", "eh", "ed", "ew", "DL", "DP", "DT",
/// "DA", "ed.".
Maybe<Unit> unitOfSuffix(std::string_view suffix);
/// The suffix as results show it: "in.", "mm", "pt.", "deg.", "em.", "%"; empty for plain numbers.
std::string_view shownSuffix(Unit unit);

/// The unit of a file's U attribute ("IN", "MM", "PT", "DL", "DEG", "STR", "BOOL", "ED", …); nothing when unknown.
Maybe<Unit> unitOfFileName(std::string_view name);
std::string_view fileNameOf(Unit unit);

}  // namespace quorvel::host
