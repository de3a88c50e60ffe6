// Durations of Tasks and Task Links: from the typed number to the stored one, and how the unit's abbreviation is shown.
//
// User.TimeValue holds the duration with its unit. What the user sees and types is a property whose formula converts
// User.TimeValue to the shape's unit, so a change of the unit converts the number that is shown without any code.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/host_model.h"
#include "schema/time_units.h"

namespace quorvel::addin {

/// Shows User.TimeValue in the shape's unit. A constant, written with commas on every machine.
const std::string& durationFormula();

/// The number of the Task's completion time in the Task's own unit; 0 when it has none or can't be read.
double timeNumber(const Shape& task);

/// Writes a completion time that was typed to User.TimeValue, in the shape's unit. A number without one of the five
/// units, and a text without a number, change nothing.
void captureCompletionTime(const Shape& task);
/// The same for the time of a Task Link; then the property's formula is written again.
void getTimeunit(const Shape& link);

/// The plain number that the property of an older shape holds becomes a duration of this unit, which the property then
/// shows; an empty text counts as 0. A shape that has a duration shows it. False, and nothing is changed, when the
/// number can't be read. `afterSuffix` ends the formula of the duration.
bool makeDuration(const Shape& shape, std::string_view property, const schema::TimeUnit& unit,
                  std::string_view afterSuffix);

/// The formula of the number format of the Task's time label, with the abbreviations of its document.
std::string getFormatText(const Shape& task);

/// Stores the abbreviations of the units in the document. They come from `parse`; its empty slot makes the
/// stored text end in ";", which `parse` reads alike. Without slots nothing changes.
void UpdateDocumentTimeUnitDisplay(const Document& document, const std::vector<std::string>& abbreviations);

}  // namespace quorvel::addin
