#include "document/upgrade_tasks.h"

#include <array>
#include <string>

#include "base/basic_text.h"
#include "base/text.h"
#include "display/detail_shapes.h"
#include "display/field_names.h"
#include "display/task_details.h"
#include "display/task_marks.h"
#include "hyperlinks/upgrade_links.h"
#include "schema/details.h"
#include "schema/time_units.h"
#include "sheets/cell_writes.h"
#include "sheets/document_cells.h"
#include "sheets/page_walk.h"
#include "sheets/rows.h"
#include "sheets/shape_actions.h"
#include "sheets/shape_classes.h"
#include "vocab/task_times.h"
#include "vocab/time_units.h"

namespace quorvel::addin {
namespace {

namespace documentCells = schema::documentCells;
namespace switches = schema::switches;
namespace taskCells = schema::taskCells;
namespace timeCells = schema::timeCells;

/// Rows that show the entries of a list for programs that look for these names.
struct ShownEntry {
  schema::NamedRow row;
  const char* formula;
};
constexpr std::array<ShownEntry, 10> shownEntries{{{"Prop.Guideline_1", "Prop.controls1"},
                                                   {"Prop.Guideline_2", "Prop.controls2"},
                                                   {"Prop.Guideline_3", "Prop.controls3"},
                                                   {"Prop.Guideline_4", "Prop.controls4"},
                                                   {"Prop.Guideline_5", "Prop.controls5"},
                                                   {"Prop.Resource_1", "Prop.Resources1"},
                                                   {"Prop.Resource_2", "Prop.Resources2"},
                                                   {"Prop.Resource_3", "Prop.Resources3"},
                                                   {"Prop.Resource_4", "Prop.Resources4"},
                                                   {"Prop.Resource_5", "Prop.Resources5"}}};

/// Masters of old stencils lack some cells.
void putWhereThere(const Shape& shape, std::string_view cell, const std::string& formula) {
  if (shape.CellExists(cell, 0) == true) putFormula(shape, cell, formula);
}

void addShownEntries(const Shape& task) {
  for (const ShownEntry& entry : shownEntries) {
    if (!addWhenMissing(task, entry.row)) continue;
    putFormula(task, entry.row.column("Invisible"), "1");
    putFormula(task, entry.row, entry.formula);
  }
}

void addRows(const Shape& task) {
  for (const schema::NamedRow& row : {switches::supportingRoles[2], switches::supportingRoles[3]}) {
    if (addWhenMissing(task, row)) putFormula(task, row, "1");
  }
  for (const schema::NamedRow& row : {schema::keptHyperlinkRows[2], schema::keptHyperlinkRows[3]}) {
    if (addWhenMissing(task, row)) putText(task, row, "");
  }
}

void addTimeUnits(const Shape& task, const Document& document) {
  if (!addWhenMissing(task, timeCells::unit)) return;
  putText(task, timeCells::unit.column("Label"), "Time Units");
  putFormula(task, timeCells::unit.column("Type"), "1");
  putText(task, timeCells::unit.column("Format"), documentText(document, documentCells::timeUnits));
  putText(task, timeCells::unit, "Minutes");
  putText(task, timeCells::unit.column("SortKey"), "32");
  putText(task, timeCells::unit.column("Prompt"),
          "Select units to be used for the Task Completion Time immediately above.");
}

void offerRoles(const Shape& task, const Document& document) {
  const Maybe<std::string> roles = document.DocumentSheet().Cells(documentCells::roleNames).Formula();
  for (const schema::NamedRow& role : {taskCells::roles[3], taskCells::roles[4]}) {
    if (task.CellExists(role, 0) != true) continue;
    if (roles) putFormula(task, role.column("Format"), *roles);
    putFormula(task, role.column("Invisible"), "False");
    putFormula(task, role.column("Type"), "1");
  }
}

void upgradeTime(const Shape& task) {
  putFormula(task, taskCells::completionTime.column("Type"), "6");
  const auto unit = askAgain([&] { return task.Cells(timeCells::unit).ResultStr(visio::unitsNone); });
  // The formula of the time takes every other text for the last unit.
  const schema::TimeUnit* named = schema::timeUnitNamed(unit.or_({}));
  if (!makeDuration(task, taskCells::completionTime, named ? *named : schema::timeUnits.back(), "")) return;
  putText(task, taskCells::completionTime.column("Format"), "#,###.####");
  completionTimeChanged(task);
  RedrawTaskUpperExtraFields(task, schema::tags::completionTime);
}

/// The links of lines that are not drawn.
void upgradeKeptLinks(const Shape& task) {
  for (const schema::Detail& detail : schema::details) {
    const std::string_view cell = detail.keptHyperlinks;
    if (cell.empty() || !(askAgain([&] { return task.CellExists(cell, 0); }) == true)) continue;
    const Maybe<std::string> links = askAgain([&] { return task.Cells(cell).ResultStr(visio::unitsNone); });
    if (!links) continue;
    const std::string now = keptLinksWithRecords(*links);
    if (now != *links) putText(task, cell, now);
  }
}

void prepareBox(const Shape& box, const std::string& separator, double version) {
  box.SetData1(std::string(marks::subTaskBox));
  if (version < 2.0 && box.RowCount(visio::sectionAction) == 0) {
    addHyperlinkAction(box);
  }
  if (version < 2.03) putWhereThere(box, "Actions.Action[1]", hyperlinkAction(separator));
  if (addWhenMissing(box, schema::subTaskBoxCells::textWidth))
    putFormula(box, schema::subTaskBoxCells::textWidth, "GUARD(TEXTWIDTH(TheText))");
}

void upgradeTask(const dsrVisioConnect& connect, const Document& document, const Shape& task, double version) {
  const std::string separator = listSeparator(document);
  addShownEntries(task);
  updateHyperLinkTask(task);
  const Shapes members = task.Shapes();
  placeDescriptionBox(task);
  if (const auto id = task.Cells(taskCells::id).ResultStr(visio::unitsNone))
    askAgain([&] { return task.SetName(*id); });
  putText(task, taskCells::frequency.column("Format"), documentText(document, documentCells::frequencies));
  putFormula(task, "lockCustProp", "1");
  putWhereThere(task, "Actions.Action[2]", hyperlinkAction(separator));
  addRows(task);
  upgradeKeptLinks(task);
  addTimeUnits(task, document);
  offerRoles(task, document);
  // The abbreviation ends in a ":" before a time, so it comes after that.
  upgradeTime(task);
  frequencyChanged(task);
  markNotes(connect, task, NotesPlace::Converted);
  if (task.Hyperlinks().Count() > 0) markOwnHyperlink(connect, task);
  prepareBox(members.Item(taskMember::subTaskBox), separator, version);
  for (const Shape& member : everyMember(task)) {
    const bool isBox = member.Data1() == marks::subTaskBox;
    if (!isBox && !(member.Data1() == marks::detail)) continue;
    updateHyperLinkTask(member);
    if (!isBox) continue;
    addWhenMissing(member, schema::linkedCells::storedTaskId);
    setSubAddress(member, taskCells::linked);
  }
}

}  // namespace

void updateTasks(dsrVisioConnect& connect, const Document& document, double version) {
  fillFieldNames(connect);
  forEachShape(document, [&](const Shape& shape) {
    if (askAgain([&] { return IsTask(shape); })) upgradeTask(connect, document, shape, version);
  });
}

}  // namespace quorvel::addin
