// Twenty thousand acts of a user on a process map: after each of them the map is right, and all of them can be undone
// and redone. QUORVEL_SEED=n runs another story; a failure prints its seed and the last acts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <random>

#include "commands/renumber_tasks.h"
#include "host/store_dump.h"
#include "schema/details.h"
#include "schema/marks.h"
#include "schema/masters.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

namespace marks = schema::marks;
namespace taskCells = schema::taskCells;

/// The sanitizers make each act five times slower.
constexpr int acts = QUORVEL_SANITIZED ? 1000 : 5000;

class RandomMap : public MapTest, public testing::WithParamInterface<int> {
 protected:
  std::mt19937 random;
  std::deque<std::string> lastActs;
  Document other;

  int below(int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); }
  template <class List>
  auto pick(const List& list) {
    return list[static_cast<std::size_t>(below(static_cast<int>(list.size())))];
  }

  void SetUp() override {
    MapTest::SetUp();
    asksForUnknownNames = true;  // acts on the cells of whatever shape comes
    const char* given = std::getenv("QUORVEL_SEED");
    random.seed(static_cast<unsigned>(given ? std::atol(given) : 20'261'125) + static_cast<unsigned>(GetParam()));
    session.platform().onForm = [this](Form& form) { answerForm(form); };
    session.platform().onMessage = [this](const MessageBox& box) {
      if (box.buttons == MessageButtons::Ok) return MessageAnswer::Ok;
      return below(3) ? MessageAnswer::Yes : MessageAnswer::No;
    };
  }

  void answerForm(Form& form) {
    for (const char* box : {"txtTaskIdLetters", "txtTaskIdLetter"}) {
      if (Control* letters = form.find(box); letters && below(3) == 0) letters->type(std::string(1, 'A' + below(4)));
    }
    for (const char* box : {"txtTaskNumber", "txtNextTaskNumber"}) {
      if (Control* number = form.find(box); number && below(2)) number->type(std::to_string(below(40)));
    }
    for (const char* option : {"OptionKeep", "Option1", "Option2", "chkapplyToall"}) {
      if (Control* control = form.find(option); control && below(3) == 0) control->click();
    }
    if (below(8) == 0) return form.close();
    for (const char* button : {"BtnOK", "Command2", below(2) ? "btnYes" : "btnNo"}) {
      if (Control* control = form.find(button)) control->click();
    }
    if (form.isOpen()) form.close();
  }

  // What there is.

  std::vector<Shape> shapesOf(const Page& page, bool (*fits)(schema::ShapeClass)) {
    std::vector<Shape> found;
    for (const Shape& shape : page.Shapes().all()) {
      if (fits(schema::classOfMaster(shape.Master().Name().or_({})))) found.push_back(shape);
    }
    return found;
  }
  std::vector<Shape> tasks(const Page& page) {
    return shapesOf(page, [](schema::ShapeClass each) { return each == schema::ShapeClass::Task; });
  }
  std::vector<Shape> connectors(const Page& page) {
    return shapesOf(page, [](schema::ShapeClass each) { return each == schema::ShapeClass::ProcessConnector; });
  }
  std::vector<Shape> ours(const Page& page) {
    return shapesOf(page, [](schema::ShapeClass each) { return each != schema::ShapeClass::Other; });
  }
  Page anyPage(const Document& document) { return pick(document.Pages().all()); }
  Window windowOf(const Document& document) {
    for (const Window& window : app.Windows().all()) {
      if (window.Document() == document) return window;
    }
    return {};
  }

  // What is done.

  std::string word() {
    static const std::vector<std::string> words{"rules",           "form 7",       "law; by-law",
                                                "a 'quoted' word", "\xC3\x84pfel", "x"};
    return pick(words);
  }
  std::string listText() {
    std::string text;
    for (int n = below(7); n > 0; --n) text += word() + ";";
    return text;
  }
  void write(const Shape& shape, std::string_view cell, std::string value) {
    std::string formula = "\"";
    for (const char each : value) formula += each == '"' ? "\"\"" : std::string(1, each);
    shape.Cells(cell).SetFormula(formula + "\"");
  }
  std::string anyTarget() {
    const Page page = anyPage(map);
    const std::vector<Shape> there = tasks(page);
    const std::string name = page.Name().or_({});
    if (there.empty() || below(6) == 0) return name;
    return name + "/" + text(pick(there), "Prop.Task_ID");
  }
  void addLink(const Shape& shape) {
    const std::string target = anyTarget();
    const Hyperlink link = shape.AddHyperlink();
    link.SetDescription(below(2) ? target : word());
    if (below(4) == 0) link.SetAddress(std::string("http://example.org"));
    link.SetSubAddress(target);
  }
  Shape anyMember(const Shape& task) {
    const std::vector<Shape> members = task.Shapes().all();
    return members.empty() ? Shape() : pick(members);
  }

  void changeTask(const Shape& task) {
    switch (below(14)) {
      case 0:
        return write(task, "Prop.Task_ID",
                     std::string(1, 'A' + below(3)) + (below(2) ? "0" : "1") + std::to_string(below(9)));
      case 1:
        return write(task, "Prop.Task_Description", below(4) ? word() : "");
      case 2:
        return write(task, pick(taskCells::roles), below(3) ? "Clerk" : "");
      case 3:
        return write(task, "Prop.Guidelines", listText());
      case 4:
        return write(task, "Prop.Resources", listText());
      case 5:
        task.Cells("Prop.Task_Completion_Time").SetFormula(std::to_string(below(4)));
        return;
      case 6:
        return write(task, "Prop.Frequency_Of_Occurrence", pick(std::vector<std::string>{"Weekly", "Daily", ""}));
      case 7:
        return write(task, "Prop.Notes", pick(std::vector<std::string>{"note", "", "  ", "two\nlines"}));
      case 8:
        return write(task, "Prop.Linked", below(2) ? "A05" : "");
      case 9:
        return addLink(task);
      case 10:
        return addLink(task.Shapes().Item(schema::taskMember::subTaskBox));
      case 11:
        return addLink(anyMember(task));
      case 12:
        task.Cells("Width").SetResult(visio::unitsInches, 1.5 + below(4) * 0.25);
        return;
      default:
        return write(task, "Prop.Time_Units", pick(std::vector<std::string>{"Hours", "Minutes", "Weeks"}));
    }
  }

  void copySome(const Page& page, const Page& onto) {
    const Window window = windowOf(page.Document());
    window.SetPage(page);
    window.DeselectAll();
    const std::vector<Shape> all = ours(page);
    for (int n = 1 + below(3); n > 0 && !all.empty(); --n) window.Select(pick(all), visio::select);
    if (window.Selection().Copy() && tasks(onto).size() < 8) onto.Paste();
  }

  std::string act() {
    const Page page = anyPage(map);
    const std::vector<Shape> there = tasks(page), links = connectors(page);
    switch (below(21)) {
      case 0:
        if (there.size() < 8) dropTask(page, 2 + below(5), 3 + below(6));
        return "drop a Task";
      case 1:
        if (ours(page).size() < 16) drop(page, below(2) ? "Task Link" : "Process Connector", below(8), below(10));
        return "drop a link or a connector";
      case 2:
        if (!links.empty()) addLink(pick(links));
        return "link a connector";
      case 3:
        if (!links.empty()) write(pick(links), "Prop.Connecting_TaskID", below(2) ? "mine" : "");
        return "type a connector's ID";
      case 4:
        if (there.size() < 8 && !there.empty()) pick(there).Duplicate();
        return "duplicate a Task";
      case 5:
        copySome(page, anyPage(map));
        return "copy within the map";
      case 6:
        if (below(3) == 0) copySome(anyPage(other), page);
        return "copy from the other map";
      case 7: {
        const std::vector<Shape> all = ours(page);
        if (!all.empty()) pick(all).Delete();
        return "delete a shape";
      }
      case 8: {
        const Window window = windowOf(map);
        window.SetPage(page);
        window.DeselectAll();
        const std::vector<Shape> all = ours(page);
        for (int n = below(4); n > 0 && !all.empty(); --n) window.Select(pick(all), visio::select);
        if (below(3) == 0) window.Selection().Delete();
        return "select some, or delete them";
      }
      case 9: {
        int undone = 0;
        for (int n = below(5); n > 0; --n) undone += app.Undo();
        for (int n = below(2) ? undone : below(3); n > 0; --n) app.Redo();
        return "undo and redo";
      }
      case 10:
        if (!there.empty()) {
          const Shape member = anyMember(pick(there));
          if (member.Hyperlinks().Count() > 0 && below(2)) member.Hyperlinks().Item(0).SetSubAddress(anyTarget());
        }
        return "aim a line's hyperlink elsewhere";
      case 11:
        addin::cbrBtnRenumberTasks_Click(session.addin());
        return "renumber";
      case 12: {
        // A user reaches the texts of details and connectors; the boxes of a Task can't be selected.
        Shape shape = links.empty() || below(3) == 0 ? Shape() : pick(links);
        if (!shape && !there.empty()) shape = anyMember(pick(there));
        const bool isReached = shape.Cells("LockSelect").Result(0) == 0 && !(shape.Data1() == marks::notes);
        if (isReached && shape.BeginTextEdit()) shape.EndTextEdit(word());
        return "type into a text";
      }
      case 13:
        windowOf(map).Activate();
        session.addin().flagFindReplaceActive = below(4) != 0;
        session.host().replaceText(pick(std::vector<std::string>{"rules", "x", "a", "form"}), below(3) ? word() : "",
                                   {}, below(2) == 1);
        session.addin().flagFindReplaceActive = false;
        return "replace in texts";
      case 14:
        if (!there.empty()) {
          const std::string notes = below(2) ? "\"\"" : "\"a note\"";
          session.host().editShapeData(pick(there), {{"Prop.Notes", notes}});
        }
        return "edit shape data";
      case 15:
        if (!there.empty()) {
          session.host().mouseDown(below(2) ? 2 : 1, 0, 1, 1);
          const Window window = windowOf(map);
          window.SetPage(page);
          window.DeselectAll();
          window.Select(below(2) ? pick(there) : anyMember(pick(there)), visio::select);
          session.host().mouseDown(1, 0, 1, 1);
        }
        return "click a Task or a member";
      default:
        if (!there.empty()) changeTask(pick(there));
        return "change a Task";
    }
  }

  // What must hold.

  void expectMark(const Shape& task, const schema::NamedRow& flag, std::string_view mark) {
    int count = 0;
    for (const Shape& member : task.Shapes().all()) count += member.Data1() == mark;
    const bool says = task.CellExists(flag, 0) == true && number(task, flag) == 1;
    EXPECT_EQ(count, says ? 1 : 0) << mark << " on " << task.Name().or_({});
  }

  void expectDetails(const Shape& task) {
    std::vector<std::string> lines;
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data1() != marks::detail) continue;
      const std::string row = member.Data3().or_({});
      if (!row.empty() && !row.starts_with(marks::icon)) lines.push_back(row);
    }
    std::ranges::sort(lines);
    std::vector<std::string> expected;
    for (const schema::Detail& detail : schema::details) {
      if (detail.keptHyperlinks.empty()) continue;
      if (number(task, detail.switchCell) == 1 && !text(task, detail.row).empty())
        expected.emplace_back(detail.row.name());
    }
    std::ranges::sort(expected);
    EXPECT_EQ(lines, expected) << "the lines of " << task.Name().or_({});
  }

  void expectRight(const Shape& task) {
    const std::string id = text(task, "Prop.Task_ID");
    if (!id.empty()) {
      EXPECT_EQ(task.Name().or_({}), id);
    }
    expectMark(task, taskCells::hyperlinkMark, marks::taskHyperlink);
    expectMark(task, taskCells::notesMark, marks::notes);
    expectMark(task, taskCells::subTaskMark, marks::subTaskHyperlink);
    expectDetails(task);
    const Shape box = task.Shapes().Item(schema::taskMember::subTaskBox);
    EXPECT_EQ(box.Data1().or_({}), marks::subTaskBox);
    EXPECT_EQ(box.Text().or_({}), text(task, "Prop.Linked"));
    EXPECT_EQ(task.Shapes().Item(schema::taskMember::descriptionBox).Text().or_({}),
              text(task, "Prop.Task_Description"));
    EXPECT_EQ(number(task.Shapes().Item(schema::taskMember::lowerBox), "LockSelect"), 1);
    expectTarget(box, text(task, "Prop.Linked"));
  }

  /// What is linked and not typed over shows the ID of its target; the stored ID is the target's in any case.
  void expectTarget(const Shape& shape, const std::string& shown) {
    if (!(shape.Hyperlinks().Count() > 0)) return;
    const std::string address = shape.Hyperlinks().Item(0).SubAddress().or_({});
    const std::size_t slash = address.find('/');
    if (slash == std::string::npos) return;
    const std::string target = address.substr(slash + 1);
    EXPECT_EQ(text(shape, "User.StoredTaskID"), target) << "stored by " << shape.Name().or_({});
    if (shown == "" || shown == "Z99") {
      EXPECT_EQ(shown, target) << "shown by " << shape.Name().or_({});
    }
  }

  void expectAllRight() {
    EXPECT_FALSE(session.engine().undo().isOpen());
    const addin::dsrVisioConnect& connect = session.addin();
    EXPECT_EQ(connect.shapesBeingAdded + connect.copiesBeingHandled, 0);
    EXPECT_FALSE(connect.flagRestoringTask || connect.deletesRefusedShapes || connect.numberedTask);
    for (const Page& page : map.Pages().all()) {
      for (const Shape& task : tasks(page)) expectRight(task);
      for (const Shape& connector : connectors(page))
        expectTarget(connector, text(connector, "Prop.Connecting_TaskID"));
    }
  }

  std::string dump() {
    // What an undo brought back with its mark loses it when the selection changes.
    for (const Window& window : app.Windows().all()) {
      window.Select(window.Page().Shapes().Item(1), visio::select);
      window.DeselectAll();
    }
    return StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id});
  }
};

TEST_P(RandomMap, StaysRightThroughEveryAct) {
  newMap("C Other");
  other = map;
  for (const auto& [cell, value] : {std::pair{"User.RoleNames", ";Baker;Clerk"},
                                    {"User.FreqSuggestions", ";Weekly;Never"},
                                    {"User.FreqSuggestions.Prompt", ";XX;DY"},
                                    {"User.Time_Unit_Disply", "S;min;h;D;W"}}) {
    write(other.DocumentSheet(), cell, value);
  }
  const Page there = other.Pages().Item(1);
  for (int i = 0; i < 3; ++i) {
    const Shape task = dropTask(there, 2 + 2 * i, 5);
    write(task, "Prop.Frequency_Of_Occurrence", i ? "Never" : "Weekly");
    write(task, "Prop.Responsible_Role", i ? "Baker" : "Clerk");
    task.Cells("Prop.Task_Completion_Time").SetFormula(std::string("3"));
  }
  const Page first = newMap();
  session.engine().undo().setLimits({.steps = 1'000'000, .bytes = std::size_t{1} << 40});
  const std::string start = dump();
  first.SetName(std::string("A First"));
  for (const char* name : {"B Second", "A Third"}) map.Pages().Add().SetName(std::string(name));
  for (int n = 1; n <= acts && !HasFailure(); ++n) {
    lastActs.push_back(act());
    if (lastActs.size() > 6) lastActs.pop_front();
    expectAllRight();
  }
  if (HasFailure()) {
    std::string story;
    for (const std::string& each : lastActs) story += "\n  " + each;
    FAIL() << "QUORVEL_SEED, and the last acts:" << story;
  }
  const std::string end = dump();
  for (const Page& page : map.Pages().all()) {
    for (const Shape& task : tasks(page))
      EXPECT_EQ(number(task.Shapes().Item(schema::taskMember::descriptionBox), "TextBkgnd"), 0)
          << "nothing is selected";
  }
  int undone = 0;
  while (app.Undo()) ++undone;
  EXPECT_GT(undone, acts / 10);
  EXPECT_EQ(firstDifference(start, dump()), "");
  for (int i = 0; i < undone; ++i) ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(end, dump()), "");
}

// Four stories, so that they run beside each other.
INSTANTIATE_TEST_SUITE_P(Seeds, RandomMap, testing::Range(0, 4));

}  // namespace
}  // namespace quorvel
