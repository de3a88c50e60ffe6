#include "host/formula/units.h"

#include <algorithm>
#include <array>
#include <numbers>

namespace quorvel::host {
namespace {

constexpr double perDegree = std::numbers::pi / 180;

struct UnitRow {
  Unit unit;
  Dimension dimension;
  double internal;            ///< size in internal units; for implicit units that of the unit they show in
  std::string_view shown;     ///< as results show it
  std::string_view fileName;  ///< as files write it
};

using enum Dimension;

// The sizes of didot and cicero are those of the typographic system of 1 m = 2660 didots.
constexpr double didot = 1 / (0.0254 * 2660);

constexpr UnitRow unitRows[] = {
    {Unit::None, None, 1, "", "NUM"},
    {Unit::Percent, None, 0.01, "%", "PER"},
    {Unit::Acre, Area, 6272640, "acres", "AC"},
    {Unit::Hectare, Area, 1e4 / (0.0254 * 0.0254), "ha.", "HA"},
    {Unit::Date, Date, 1, "", "DATE"},
    {Unit::Duration, ElapsedTime, 1, "ed.", "DE"},
    {Unit::ElapsedWeek, ElapsedTime, 7, "ew.", "EW"},
    {Unit::ElapsedDay, ElapsedTime, 1, "ed.", "ED"},
    {Unit::ElapsedHour, ElapsedTime, 1.0 / 24, "eh.", "EH"},
    {Unit::ElapsedMinute, ElapsedTime, 1.0 / 1440, "em.", "EM"},
    {Unit::ElapsedSecond, ElapsedTime, 1.0 / 86400, "es.", "ES"},
    {Unit::Typographic, Length, 1.0 / 72, "pt.", "DT"},
    {Unit::PicasAndPoints, Length, 1.0 / 6, "p", "P_PT"},
    {Unit::Points, Length, 1.0 / 72, "pt.", "PT"},
    {Unit::Picas, Length, 1.0 / 6, "p", "P"},
    {Unit::CicerosAndDidots, Length, 12 * didot, "c", "C_D"},
    {Unit::Didots, Length, didot, "d", "D"},
    {Unit::Ciceros, Length, 12 * didot, "c", "C"},
    {Unit::Page, Length, 1, "in.", "DP"},
    {Unit::Drawing, Length, 1, "in.", "DL"},
    {Unit::Inches, Length, 1, "in.", "IN"},
    {Unit::Feet, Length, 12, "ft.", "FT"},
    {Unit::FeetAndInches, Length, 12, "ft.", "F_I"},
    {Unit::Miles, Length, 63360, "mi.", "MI"},
    {Unit::Centimetres, Length, 1 / 2.54, "cm", "CM"},
    {Unit::Millimetres, Length, 1 / 25.4, "mm", "MM"},
    {Unit::Metres, Length, 1 / 0.0254, "m", "M"},
    {Unit::Kilometres, Length, 1000 / 0.0254, "km", "KM"},
    {Unit::InchFractions, Length, 1, "in.", "IN_F"},
    {Unit::MileFractions, Length, 63360, "mi.", "MI_F"},
    {Unit::Yards, Length, 36, "yd.", "YD"},
    {Unit::NauticalMiles, Length, 1852 / 0.0254, "nm.", "NM"},
    {Unit::Angle, Angle, perDegree, "deg.", "DA"},
    {Unit::Degrees, Angle, perDegree, "deg.", "DEG"},
    {Unit::DegreesMinutesSeconds, Angle, perDegree, "deg.", "AD"},
    {Unit::Radians, Angle, 1, "rad.", "RAD"},
    {Unit::Minutes, Angle, perDegree / 60, "'", "AM"},
    {Unit::Seconds, Angle, perDegree / 3600, "\"", "AS"},
    {Unit::Guid, Other, 1, "", "GUID"},
    {Unit::Currency, Other, 1, "", "CURRENCY"},
    {Unit::Nurbs, Other, 1, "", "NURBS"},
    {Unit::Polyline, Other, 1, "", "POLYLINE"},
    {Unit::Point, Other, 1, "", "PNT"},
    {Unit::String, Other, 1, "", "STR"},
    {Unit::Boolean, Other, 1, "", "BOOL"},
    {Unit::Multidimensional, Area, 1, "", "MULTIDIM"},
    {Unit::Colour, Other, 1, "", "COLOR"},
};

struct Suffix {
  std::string_view text;  ///< lower case, without a closing point
  Unit unit;
};

constexpr Suffix suffixes[] = {
    {"%", Unit::Percent},
    {"in", Unit::Inches},
    {"inch", Unit::Inches},
    {"inches", Unit::Inches},
    {"\"", Unit::Inches},
    {"ft", Unit::Feet},
    {"foot", Unit::Feet},
    {"feet", Unit::Feet},
    {"'", Unit::Feet},
    {"mi", Unit::Miles},
    {"mile", Unit::Miles},
    {"miles", Unit::Miles},
    {"cm", Unit::Centimetres},
    {"centimeter", Unit::Centimetres},
    {"centimeters", Unit::Centimetres},
    {"mm", Unit::Millimetres},
    {"millimeter", Unit::Millimetres},
    {"millimeters", Unit::Millimetres},
    {"m", Unit::Metres},
    {"meter", Unit::Metres},
    {"meters", Unit::Metres},
    {"km", Unit::Kilometres},
    {"kilometer", Unit::Kilometres},
    {"kilometers", Unit::Kilometres},
    {"yd", Unit::Yards},
    {"yard", Unit::Yards},
    {"yards", Unit::Yards},
    {"nm", Unit::NauticalMiles},
    {"in_f", Unit::InchFractions},
    {"mi_f", Unit::MileFractions},
    {"pt", Unit::Points},
    {"point", Unit::Points},
    {"points", Unit::Points},
    {"p", Unit::Picas},
    {"pica", Unit::Picas},
    {"picas", Unit::Picas},
    {"c", Unit::Ciceros},
    {"cicero", Unit::Ciceros},
    {"ciceros", Unit::Ciceros},
    {"d", Unit::Didots},
    {"didot", Unit::Didots},
    {"didots", Unit::Didots},
    {"deg", Unit::Degrees},
    {"degree", Unit::Degrees},
    {"degrees", Unit::Degrees},
    {"\xC2\xB0", Unit::Degrees},
    {"rad", Unit::Radians},
    {"radian", Unit::Radians},
    {"radians", Unit::Radians},
    {"es", Unit::ElapsedSecond},
    {"esecond", Unit::ElapsedSecond},
    {"eseconds", Unit::ElapsedSecond},
    {"em", Unit::ElapsedMinute},
    {"eminute", Unit::ElapsedMinute},
    {"eminutes", Unit::ElapsedMinute},
    {"eh", Unit::ElapsedHour},
    {"ehour", Unit::ElapsedHour},
    {"ehours", Unit::ElapsedHour},
    {"ed", Unit::ElapsedDay},
    {"eday", Unit::ElapsedDay},
    {"edays", Unit::ElapsedDay},
    {"ew", Unit::ElapsedWeek},
    {"eweek", Unit::ElapsedWeek},
    {"eweeks", Unit::ElapsedWeek},
    {"dl", Unit::Drawing},
    {"dp", Unit::Page},
    {"dt", Unit::Typographic},
    {"da", Unit::Angle},
    {"de", Unit::Duration},
    {"date", Unit::Date},
    {"acre", Unit::Acre},
    {"acres", Unit::Acre},
    {"ha", Unit::Hectare},
    {"hectare", Unit::Hectare},
    {"hectares", Unit::Hectare},
};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

bool equalAscii(std::string_view a, std::string_view lowerCase) {
  return std::equal(a.begin(), a.end(), lowerCase.begin(), lowerCase.end(),
                    [](char x, char y) { return lower(x) == y; });
}

const UnitRow& rowOf(Unit unit) {
  // Results are converted millions of times: one step from a unit to its row.
  static const auto rowByUnit = [] {
    std::array<const UnitRow*, 256> rows;
    rows.fill(&unitRows[0]);
    for (const UnitRow& row : unitRows) rows[static_cast<std::size_t>(row.unit)] = &row;
    return rows;
  }();
  return *rowByUnit[static_cast<std::size_t>(unit)];
}

}  // namespace

Dimension dimensionOf(Unit unit) { return rowOf(unit).dimension; }
double internalPer(Unit unit) { return rowOf(unit).internal; }
double fromInternal(double internal, Unit unit) { return internal / rowOf(unit).internal; }
double toInternal(double number, Unit unit) { return number * rowOf(unit).internal; }

Maybe<Unit> unitOfSuffix(std::string_view suffix) {
  if (suffix.size() > 1 && suffix.back() == '.') suffix.remove_suffix(1);
  for (const Suffix& known : suffixes) {
    if (equalAscii(suffix, known.text)) return known.unit;
  }
  return {};
}

std::string_view shownSuffix(Unit unit) { return rowOf(unit).shown; }

Maybe<Unit> unitOfFileName(std::string_view name) {
  for (const UnitRow& row : unitRows) {
    if (std::equal(name.begin(), name.end(), row.fileName.begin(), row.fileName.end(),
                   [](char a, char b) { return lower(a) == lower(b); }))
      return row.unit;
  }
  return {};
}

std::string_view fileNameOf(Unit unit) { return rowOf(unit).fileName; }

}  // namespace quorvel::host
