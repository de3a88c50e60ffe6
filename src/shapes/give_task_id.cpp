#include "shapes/give_task_id.h"

#include <utility>

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "schema/cells.h"
#include "vocab/task_id.h"

namespace quorvel::addin {
namespace {

/// To be called before the number is used.
bool countOn(const Page& page) {
  const Maybe<long> number = nextTaskIdOf(page);
  return number && page.PageSheet().Cells(schema::pageCells::nextTaskId).SetResult(visio::unitsNone, *number + 1);
}

}  // namespace

void writeFirstTaskId(dsrVisioConnect& connect, const Shape& task, const std::string& id) {
  const Cell cell = askAgain([&] { return task.Cells(schema::taskCells::id); });
  const Shape outer = std::exchange(connect.numberedTask, task);
  // A copy must not keep the ID of its original.
  askAgain([&] { return cell.FormulaForce(quoted(id)); });
  connect.numberedTask = outer;
  // A later change of the ID reads the old one from the name.
  if (!id.empty()) askAgain([&] { return task.SetName(cell.ResultStr(visio::unitsNone)); });
}

bool giveCountedTaskId(dsrVisioConnect& connect, const Shape& task, const Page& page, const std::string& id) {
  const bool counted = countOn(page);
  writeFirstTaskId(connect, task, counted ? id : std::string());
  return counted;
}

void giveNextTaskId(dsrVisioConnect& connect, const Shape& task, const Page& page) {
  const Maybe<long> number = nextTaskIdOf(page);
  const Maybe<std::string> letters = taskIdLettersOf(page);
  if (number && letters) {
    giveCountedTaskId(connect, task, page, taskIdText(*letters, *number));
  } else {
    writeFirstTaskId(connect, task, {});
  }
}

}  // namespace quorvel::addin
