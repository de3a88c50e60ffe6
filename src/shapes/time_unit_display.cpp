#include "shapes/time_unit_display.h"

#include <algorithm>
#include <vector>

#include "base/basic_text.h"
#include "base/text.h"
#include "connect/host_queries.h"
#include "display/task_details.h"
#include "links/task_link_description.h"
#include "schema/details.h"
#include "schema/time_units.h"
#include "shapes/paste_batch.h"
#include "sheets/document_cells.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"
#include "vocab/parse.h"
#include "vocab/time_units.h"

namespace quorvel::addin {
namespace {

/// The number's format comes before the abbreviation, and is longer for some units.
long formatLength(std::string_view unit) {
  const auto found = std::ranges::find_if(
      schema::timeUnits, [&](const schema::TimeUnit& each) { return equalIgnoringCase(each.name, unit); });
  const schema::TimeUnit& known = found == schema::timeUnits.end() ? schema::timeUnits.front() : *found;
  return static_cast<long>(known.format.size());
}

/// The quoted text of a format from 1-based `start` to `after` characters before its end; nothing for a format that is
/// too short, because it shows no time.
Maybe<std::string> quotedPart(const Maybe<std::string>& format, long start, long after) {
  if (!format) return {};
  const long count = static_cast<long>(lengthOf(*format)) - (start - 1) - after;
  if (count < 0) return {};
  return replaceAll(mid(*format, start, count), "'\\''", "'");
}

/// From "0.##'m'".
Maybe<std::string> abbreviationOnTask(const Shape& task, std::string_view unit) {
  Maybe<std::string> shown;
  for (const Shape& member : task.Shapes().all()) {
    if (!(member.Data2() == schema::tags::completionTime)) continue;
    const auto format = member.Cells("Fields.Format[1]").ResultStr(visio::unitsNone);
    if (const auto read = quotedPart(format, formatLength(unit) + 2, 1)) shown = read;
  }
  return shown;
}

/// From "'Send form' ' ('0.##'m)'". The description's apostrophes are escaped there.
Maybe<std::string> abbreviationOnLink(const Shape& link, std::string_view unit) {
  const Maybe<std::string> showsDescription = link.Cells(schema::switches::linkDescription).ResultStr(visio::unitsNone);
  const Maybe<std::string> description = link.Cells(schema::taskLinkCells::description).ResultStr(visio::unitsNone);
  if (!showsDescription || val(*showsDescription) != 1 || !description) return {};
  const long length = static_cast<long>(lengthOf(withEscapedApostrophes(*description)));
  return quotedPart(link.Cells("Fields.Format[1]").ResultStr(visio::unitsNone), length + 9 + formatLength(unit), 2);
}

}  // namespace

namespace {

void redrawTimeUnit(const Shape& shape) {
  if (IsTask(shape)) RedrawTaskUpperExtraFields(shape, schema::tags::completionTime);
  if (IsTaskLink(shape)) GetAddedTaskLinkDescription2(shape);
}

}  // namespace

void redrawTimeUnits(const Document& document) { forEachShape(document, redrawTimeUnit); }

void CheckTimeUnitDisplay(dsrVisioConnect& connect, const Selection& selection, bool, bool) {
  reconcileTimeUnits(connect, selection.all());
}

void reconcileTimeUnits(dsrVisioConnect& connect, const std::vector<Shape>& arrived) {
  if (arrived.empty()) return;
  const Document document = arrived.front().Document();
  joinPasteBatch(connect, document);
  const std::vector<std::string> units = parse(documentText(document, schema::documentCells::timeUnits), ";");
  std::vector<std::string> abbreviations =
      parse(documentText(document, schema::documentCells::timeUnitAbbreviations), ";");
  // A shape that shows no time counts as showing what the last shape with the same unit showed. Only the same unit: a
  // label in minutes does not show the abbreviation of hours.
  std::vector<Maybe<std::string>> shown(units.size());
  bool takesOver = false;
  for (const Shape& shape : arrived) {
    if (!IsTask(shape) && !IsTaskLink(shape)) continue;
    const Maybe<std::string> unit = shape.Cells(schema::timeCells::unit).ResultStr(visio::unitsNone);
    // The last slot is empty and is no unit: a shape without a unit must not match it.
    for (std::size_t i = 0; unit && i + 1 < units.size(); ++i) {
      if (!equalIgnoringCase(*unit, units[i])) continue;
      Maybe<std::string> read;
      if (IsTask(shape)) read = abbreviationOnTask(shape, units[i]);
      if (IsTaskLink(shape)) read = abbreviationOnLink(shape, units[i]);
      if (read) shown[i] = read;
      if (i >= abbreviations.size() || shown[i].or_({}).empty() || shown[i] == abbreviations[i]) continue;
      if (!connect.flagTimeUnitAbbr) {
        connect.flagTimeUnitAbbr = true;
        showPage(connect, shape.ContainingPage());
        takesOver = connect.platform.showMessage(
                        {"The time unit abbreviation is not the same. Do you want to update it in this document?",
                         "Quorvel", MessageButtons::YesNoCancel, MessageIcon::None}) == MessageAnswer::Yes;
      }
      if (takesOver) abbreviations[i] = *shown[i];
    }
  }
  UpdateDocumentTimeUnitDisplay(document, abbreviations);
  if (takesOver) {
    redrawTimeUnits(document);
  } else {
    // All others show the document's abbreviations already.
    for (const Shape& shape : arrived) redrawTimeUnit(shape);
  }
}

}  // namespace quorvel::addin
