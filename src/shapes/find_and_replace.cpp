#include "shapes/find_and_replace.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/basic_text.h"
#include "base/text.h"
#include "connect/host_queries.h"
#include "display/detail_shapes.h"
#include "links/task_link_description.h"
#include "schema/details.h"
#include "sheets/page_walk.h"
#include "sheets/shape_classes.h"
#include "sheets/text_fields.h"
#include "vocab/time_units.h"

namespace quorvel::addin {

struct ReplacedTexts {
  Document document;  ///< that Replace works on
  bool isScopeOpen = false;

  bool arePlain = false;   ///< between the opening of a dialog and its end
  int innerDialogs = 0;    ///< dialogs that have opened inside that one
  bool isWriting = false;  ///< the changes of texts are the add-in's own

  struct TaskTexts {
    Shape task;
    Shape description;
    std::vector<Shape> lines;  ///< of guidelines and resources
  };
  std::vector<TaskTexts> tasks;
};

namespace {

namespace taskCells = schema::taskCells;
namespace taskLinkCells = schema::taskLinkCells;

constexpr const char* emptyFile = "c:\\lumeth.txt";

class OwnWrites {
 public:
  explicit OwnWrites(ReplacedTexts& texts) : texts_(texts), before_(std::exchange(texts.isWriting, true)) {}
  ~OwnWrites() { texts_.isWriting = before_; }
  OwnWrites(const OwnWrites&) = delete;
  OwnWrites& operator=(const OwnWrites&) = delete;

 private:
  ReplacedTexts& texts_;
  bool before_;
};

/// The detail whose list entry the shape shows; null for other shapes, icons beside such lines included.
const schema::Detail* listEntryOf(const Shape& shape) {
  if (!(shape.Data1() == marks::detail)) return nullptr;
  const Maybe<int> position = schema::positionOfRow(shape.Data3().or_({}));
  return position && *position <= schema::lastListRow ? &schema::detailAt(*position) : nullptr;
}

Shape descriptionBoxOf(const Shape& task) {
  const Shapes members = task.Shapes();
  return members.Count() >= taskMember::descriptionBox ? members.Item(taskMember::descriptionBox) : Shape();
}

Maybe<std::string> textOf(const Shape& shape, std::string_view cell) {
  if (!(shape.CellExists(cell, 0) == true)) return {};
  return shape.Cells(cell).ResultStr(visio::unitsNone);
}

ReplacedTexts& begin(dsrVisioConnect& connect) {
  connect.replacedTexts = std::make_shared<ReplacedTexts>();
  connect.replacedTexts->document = connect.gvsoApp.ActiveDocument();
  return *connect.replacedTexts;
}

// Before.

void prepareTask(ReplacedTexts& texts, const Shape& task, bool isFirstDialog) {
  ReplacedTexts::TaskTexts prepared{task, descriptionBoxOf(task), {}};
  for (const Shape& member : task.Shapes().all()) {
    if (!listEntryOf(member)) continue;
    prepared.lines.push_back(member);
    member.Cells("LockTextEdit").FormulaForce("0");
    if (isFirstDialog) member.SetText(member.Text());
  }
  const Shape& box = prepared.description;
  if (const Maybe<std::string> description = textOf(task, taskCells::description); description && isFirstDialog)
    box.SetText(*description);
  // Replace selects the text that it has found.
  box.Cells("LockSelect").FormulaForce("0");
  box.BringToFront();
  texts.tasks.push_back(std::move(prepared));
}

void prepareLink(const Shape& link, bool isFirstDialog) {
  link.Cells("LockTextEdit").FormulaForce("0");
  const Maybe<std::string> description = textOf(link, taskLinkCells::description);
  if (description && isFirstDialog) link.SetText(*description);
}

// After.

/// The members behind the box go before it, one by one, so that all are in their old order again.
void putBoxBack(const ReplacedTexts::TaskTexts& texts) {
  const Shapes members = texts.task.Shapes();
  int turns = members.Count().or_(0) - taskMember::descriptionBox;
  for (; turns > 0; --turns) {
    const Shape member = members.Item(taskMember::descriptionBox);
    if (member == texts.description || !member.BringToFront()) break;
  }
  texts.description.Cells("LockSelect").FormulaForce("1");
  for (const Shape& line : texts.lines) line.Cells("LockTextEdit").FormulaForce("1");
}

void endDialog(ReplacedTexts& texts) {
  texts.arePlain = false;
  texts.innerDialogs = 0;
  // A handler may open another dialog, which prepares its own list.
  const std::vector<ReplacedTexts::TaskTexts> tasks = texts.tasks;
  for (const ReplacedTexts::TaskTexts& each : tasks) putBoxBack(each);
}

/// The new texts of entries of a Task's list.
struct ListChange {
  Shape task;
  const schema::DetailList* list;
  std::vector<std::pair<int, std::string>> entries;  ///< by number from 1
};

std::vector<ListChange> listChangesIn(const std::vector<Shape>& changed) {
  std::vector<ListChange> changes;
  for (const Shape& line : changed) {
    const schema::Detail* entry = listEntryOf(line);
    const Maybe<std::string> text = line.Text();
    const Shape task = line.Parent();
    if (!entry || !text || !task) continue;
    const auto list = std::ranges::find(schema::detailLists, entry->tag, &schema::DetailList::tag);
    auto change =
        std::ranges::find_if(changes, [&](const ListChange& each) { return each.task == task && each.list == &*list; });
    if (change == changes.end()) change = changes.insert(changes.end(), {task, &*list, {}});
    change->entries.emplace_back(entry->row.name().back() - '0', *text);
  }
  return changes;
}

/// The list with one entry replaced. Empty entries are not counted: they got no row.
std::string withEntry(std::string_view list, int number, const std::string& entry) {
  std::string result;
  for (const std::string_view piece : splitAt(list, ';')) {
    if (!result.empty() || piece.data() != list.data()) result += ';';
    const bool isEntry = !piece.empty() && --number == 0;
    result += isEntry ? std::string_view(entry) : piece;
  }
  return result;
}

void writeList(const dsrVisioConnect& connect, const ListChange& change) {
  const Cell cell = change.task.Cells(change.list->cell);
  const Maybe<std::string> before = cell.ResultStr(visio::unitsNone);
  if (!before) return;
  // From the last entry on: a text may have become empty or several entries, which moves those behind it.
  auto entries = change.entries;
  std::ranges::sort(entries, std::ranges::greater(), &std::pair<int, std::string>::first);
  std::string after = *before;
  for (const auto& [number, text] : entries) after = withEntry(after, number, text);
  if (after == *before) return;
  const Page page = change.task.ContainingPage();
  const Window window = windowOf(connect, page.Document());
  if (window.Page() == page) {
    window.DeselectAll();
    window.Select(change.task, visio::select);
  }
  cell.FormulaForce(quoted(after));
}

void takeDescription(const ReplacedTexts::TaskTexts& texts) {
  const Maybe<std::string> text = texts.description.Text();
  if (!text || hasTextField(texts.description)) return;
  if (textOf(texts.task, taskCells::description) != *text)
    texts.task.Cells(taskCells::description).FormulaForce(quoted(*text));
  showInText(texts.description, cellOfTask(texts.task, taskCells::description));
}

void restoreLine(const Shape& task, const Shape& line) {
  // A line of a list that was changed is deleted, and another one drawn.
  const schema::Detail* entry = listEntryOf(line);
  if (entry && !hasTextField(line)) showInText(line, "=" + cellOfTask(task, entry->row));
}

void restoreLink(const Shape& link) {
  link.Cells("LockTextEdit").FormulaForce("1");
  if (hasTextField(link)) return;
  const Cell time = link.Cells(taskLinkCells::time);
  // A time that is shown by its formula is as it was typed; what the formula shows is rounded.
  const bool isTyped = time.Result(visio::unitsNone) != 0 && !containsIgnoringCase(time.Formula().or_({}), "FORMATEX");
  if (isTyped) getTimeunit(link);
  showInText(link, "=" + std::string(taskLinkCells::time.cell()));
  GetAddedTaskLinkDescription2(link);
}

void takeTexts(dsrVisioConnect& connect, ReplacedTexts& texts) {
  const OwnWrites own(texts);
  const std::vector<Shape> changed = std::exchange(connect.changedShapes, {});
  // A handler may open another dialog, which prepares its own list.
  const std::vector<ReplacedTexts::TaskTexts> tasks = texts.tasks;
  // The texts are read before the first list is written, because that draws new lines.
  const std::vector<ListChange> lists = listChangesIn(changed);
  for (const ReplacedTexts::TaskTexts& each : tasks) takeDescription(each);
  for (const Shape& shape : changed) {
    const Shape task = shape.Parent();
    const bool isPrepared = std::ranges::find(tasks, task, &ReplacedTexts::TaskTexts::task) != tasks.end();
    if (!isPrepared && IsTask(task)) takeDescription({task, descriptionBoxOf(task), {}});
  }
  for (const ListChange& change : lists) writeList(connect, change);
  for (const ReplacedTexts::TaskTexts& each : tasks) {
    for (const Shape& line : each.lines) restoreLine(each.task, line);
  }
  forEachShape(texts.document, [](const Shape& shape) {
    if (IsTaskLink(shape)) restoreLink(shape);
  });
}

}  // namespace

void gvsoApp_BeforeModal(dsrVisioConnect& connect) {
  if (!connect.flagFindReplaceActive) return;
  if (!connect.replacedTexts) begin(connect);
  const std::shared_ptr<ReplacedTexts> texts = connect.replacedTexts;
  if (std::exchange(texts->arePlain, true)) {
    ++texts->innerDialogs;
    return;
  }
  const OwnWrites own(*texts);
  // A second dialog of one Replace must not undo what was changed in the first.
  const bool isFirstDialog = std::exchange(texts->tasks, {}).empty();
  forEachShape(texts->document, [&](const Shape& shape) {
    if (IsTask(shape)) prepareTask(*texts, shape, isFirstDialog);
    if (IsTaskLink(shape)) prepareLink(shape, isFirstDialog);
  });
}

void gvsoApp_AfterModal(dsrVisioConnect& connect) {
  // Kept as it is known, after each dialog; nothing reads the file.
  connect.platform.createTextFile(emptyFile);
  const std::shared_ptr<ReplacedTexts> texts = connect.replacedTexts;
  if (!texts || !texts->arePlain) return;
  if (texts->innerDialogs > 0) {
    --texts->innerDialogs;
    return;
  }
  endDialog(*texts);
  if (texts->isScopeOpen) return;
  // A dialog outside of Replace: no later event would make the texts fields again.
  takeTexts(connect, *texts);
  connect.replacedTexts.reset();
}

void enterReplaceScope(dsrVisioConnect& connect) {
  connect.changedShapes.clear();
  connect.flagFindScopeEntered = true;
  if (connect.flagFindReplaceActive) begin(connect).isScopeOpen = true;
}

void exitReplaceScope(dsrVisioConnect& connect) {
  if (!connect.flagFindReplaceActive) return;
  connect.flagFindReplaceActive = false;
  if (!connect.replacedTexts) begin(connect);
  const std::shared_ptr<ReplacedTexts> texts = std::exchange(connect.replacedTexts, nullptr);
  if (texts->arePlain) endDialog(*texts);
  takeTexts(connect, *texts);
}

void gvsoApp_TextChanged(dsrVisioConnect& connect, const Shape& shape) {
  if (connect.replacedTexts && connect.replacedTexts->isWriting) return;
  if (const schema::Detail* entry = listEntryOf(shape)) {
    if (textOf(shape.Parent(), entry->row) != shape.Text().or_({})) connect.changedShapes.push_back(shape);
  } else if (IsTaskLink(shape)) {
    if (hasTextField(shape)) return;
    if (const Maybe<std::string> text = shape.Text())
      shape.Cells(taskLinkCells::description).FormulaForce(quoted(*text));
  } else if (IsTask(shape.Parent())) {
    connect.changedShapes.push_back(shape);
  }
}

}  // namespace quorvel::addin
