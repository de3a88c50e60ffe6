#include "display/task_marks.h"

#include <string>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"
#include "data/install_folder.h"
#include "display/detail_shapes.h"
#include "sheets/protection.h"
#include "sheets/rows.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

namespace notesMarkCells = schema::notesMarkCells;
namespace taskCells = schema::taskCells;

/// A mark, its picture and the cell that tells whether it exists.
struct Mark {
  std::string_view data1;
  std::string_view picture;
  schema::NamedRow cell;
};
constexpr Mark ownHyperlink{marks::taskHyperlink, installed::hyperlinkMark, taskCells::hyperlinkMark};
constexpr Mark notes{marks::notes, installed::notesMark, taskCells::notesMark};
constexpr Mark subTaskHyperlink{marks::subTaskHyperlink, installed::hyperlinkMark, taskCells::subTaskMark};

bool isOn(const Shape& task, const Mark& mark) {
  return task.CellExists(mark.cell, 0) == true && task.Cells(mark.cell).Result(visio::unitsNone) == 1;
}

Shape memberMarked(const Shape& task, const Mark& mark) {
  for (const Shape& member : task.Shapes().all()) {
    if (member.Data1() == mark.data1) return member;
  }
  return {};
}

/// The picture without its place; null when the Task has the mark or there is no picture. The cell is set last, by
/// `finish`.
Shape begin(const dsrVisioConnect& connect, const Shape& task, const Mark& mark) {
  if (lacksRow(task, mark.cell)) addRow(task, mark.cell);
  if (isOn(task, mark)) return {};
  return task.Import(installedFile(connect.platform, mark.picture));
}

void finish(const Shape& task, const Shape& picture, const Mark& mark, bool isSelectable) {
  picture.Cells("LockSelect").FormulaForce(isSelectable ? "0" : "1");
  picture.Cells("LockFormat").FormulaForce("1");
  const bool isMarked = askAgain([&] { return picture.SetData1(std::string(mark.data1)); }) &&
                        askAgain([&] { return task.Cells(mark.cell).FormulaForce("1"); });
  if (isMarked) {
    Protection(picture);
  } else {
    // A picture that cannot be found again could not be removed with its reason.
    picture.Delete();
  }
}

void setSize(const Shape& picture, const char* width, const char* height) {
  picture.Cells("Width").FormulaForce(width);
  picture.Cells("Height").FormulaForce(height);
}

void remove(const Shape& task, const Mark& mark) {
  if (!isOn(task, mark)) return;
  askAgain([&] { return task.Cells(mark.cell).FormulaForce("0"); });
  const Shape picture = askAgain([&] { return memberMarked(task, mark); });
  deleteProtected(picture);
}

}  // namespace

void markOwnHyperlink(const dsrVisioConnect& connect, const Shape& task) {
  const Shape picture = begin(connect, task, ownHyperlink);
  if (!picture) return;
  setSize(picture, "0.18", "0.08");
  picture.Cells("PinY").FormulaForce(cellOfTask(task, "Height - (0.08) "));
  picture.Cells("PinX").FormulaForce("0.19");
  finish(task, picture, ownHyperlink, false);
}

void markNotes(const dsrVisioConnect& connect, const Shape& task, NotesPlace place) {
  const Maybe<std::string> text = task.Cells(taskCells::notes).ResultStr(visio::unitsNone);
  if (!text || trimmed(*text).empty()) {
    if (lacksRow(task, taskCells::notesMark)) addRow(task, taskCells::notesMark);
    return;
  }
  const Shape picture = begin(connect, task, notes);
  if (!picture) return;
  setSize(picture, "0.1", "0.1");
  const bool isNew = place == NotesPlace::New;
  picture.Cells("PinY").FormulaForce(cellOfTask(task, isNew ? "Height - (0.1/2-0.0001)" : "Height - (0.1/2)-0.005"));
  picture.Cells("PinX").FormulaForce(cellOfTask(task, isNew ? "Width -(0.1/2-0.0001)" : "Width -(0.1/2)-0.005"));
  picture.Cells("Comment").FormulaForce(cellOfTask(task, taskCells::notes));
  picture.BringToFront();
  addRow(picture, notesMarkCells::title);
  picture.Cells(notesMarkCells::title).FormulaForce(cellOfTask(task, taskCells::notes));
  addRow(picture, notesMarkCells::hiddenRow);
  picture.Cells(notesMarkCells::hiddenRow.column("Invisible")).FormulaForce("-1");
  finish(task, picture, notes, true);
}

void markSubTaskHyperlink(const dsrVisioConnect& connect, const Shape& task, const Shape& box) {
  if (lacksRow(task, taskCells::subTaskMark)) addRow(task, taskCells::subTaskMark);
  if (!(box.Hyperlinks().Count() > 0)) return;
  const Shape picture = begin(connect, task, subTaskHyperlink);
  if (!picture) return;
  setSize(picture, "0.18", "0.08");
  picture.Cells("PinY").FormulaForce("Height * 0.5 - 0.18");
  finish(task, picture, subTaskHyperlink, false);
  placeSubTaskMark(task, box);
}

void placeSubTaskMark(const Shape& task, const Shape& box) {
  if (!isOn(task, subTaskHyperlink)) return;
  const auto inches = [&](std::string_view cell) { return box.Cells(cell).Result(visio::unitsInches); };
  const auto textHeight = inches("TxtHeight"), pin = inches("PinX"), width = inches("Width"),
             textWidth = inches(schema::subTaskBoxCells::textWidth);
  if (!textHeight || !pin || !width || !textWidth) return;
  // From this height on the text has more than one line.
  constexpr double twoLines = 0.23, gap = 0.1;
  const double place = *textHeight < twoLines ? *pin + *width / 2 - *textWidth - gap : *pin - *width / 2;
  const Shape mark = memberMarked(task, subTaskHyperlink);
  if (mark) mark.Cells("PinX").ResultForce(visio::unitsInches, place);
}

bool hasSubTaskMark(const Shape& task) { return isOn(task, subTaskHyperlink); }

void removeOwnHyperlinkMark(const Shape& task) { remove(task, ownHyperlink); }
void removeNotesMark(const Shape& task) { remove(task, notes); }
void removeSubTaskMark(const Shape& task) { remove(task, subTaskHyperlink); }

}  // namespace quorvel::addin
