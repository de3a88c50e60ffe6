// Work on a map while another drawing is shown: each rule uses the document and page of what changed, a command
// the ones shown when its dialog opened.
#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <regex>

#include "commands/customize_role_names.h"
#include "commands/quorvel_options.h"
#include "commands/renumber_tasks.h"
#include "commands/task_display.h"
#include "commands/task_display_options.h"
#include "commands/task_link_display_options.h"
#include "document/page_decorations.h"
#include "shapes/time_unit_display.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

/// Calls a function at each event that a test chooses.
class Listener : public ApplicationEvents {
 public:
  std::function<void()> onSelectionChanged, onDocumentCreated;
  std::function<void(const Shape&)> onShapeAdded, onBeforeShapeDelete;
  void SelectionChanged(Window) override { run(onSelectionChanged); }
  void DocumentCreated(Document) override { run(onDocumentCreated); }
  void ShapeAdded(Shape shape) override { run(onShapeAdded, shape); }
  void BeforeShapeDelete(Shape shape) override { run(onBeforeShapeDelete, shape); }

 private:
  template <class Function, class... Arguments>
  void run(const Function& function, const Arguments&... arguments) {
    if (!function || running_) return;
    running_ = true;
    function(arguments...);
    running_ = false;
  }
  bool running_ = false;
};

class OtherDocuments : public MapTest {
 protected:
  Listener listener;
  Page page;  ///< the first one of the map under test
  Document other, foreign;

  void SetUp() override {
    MapTest::SetUp();
    // Drops show their page; a listener after the add-in can show another one at once.
    session.host().advise(listener);
  }
  void TearDown() override {
    listener = {};
    session.host().unadvise(listener);
  }

  Document newDocument(const std::string& templateFile) {
    const Document document = app.Documents().Add(templateFile);
    EXPECT_TRUE(document) << lastRefusal();
    return document;
  }
  void openMap() { page = newMap("AB Order entry"); }
  /// A map whose letters, lists and switches all differ from those of the map under test.
  void openOther() {
    other = newDocument(session.templatePath());
    const Page first = other.Pages().Item(1);
    first.SetName(std::string("CD Other"));
    const Shape sheet = other.DocumentSheet();
    for (const auto& [cell, value] : {std::pair{"User.RoleNames", ";Baker;Miller"},
                                      {"User.FreqSuggestions", ";Weekly;Never"},
                                      {"User.FreqSuggestions.Prompt", ";XX;NV"},
                                      {"User.Time_Unit_Disply", "S;M;H;D;W"},
                                      {"User.Time_Unit.Prompt", "Days"},
                                      {"User.lstSpr", ";"}}) {
      ASSERT_TRUE(sheet.Cells(cell).FormulaForce("\"" + std::string(value) + "\"")) << cell;
    }
    for (const char* off : {"User.Resources", "User.Task_Visible", "User.TaskLink_txt_Visible"})
      first.PageSheet().Cells(off).SetResult(0, 0.0);
    ASSERT_TRUE(dropTask(first));
    lettersAsked.clear();
  }
  void openForeign() { foreign = newDocument(""); }

  Window windowOf(const Document& document) {
    for (const Window& window : app.Windows().all()) {
      if (window.Document() == document) return window;
    }
    return {};
  }
  void show(const Document& document) { EXPECT_TRUE(windowOf(document).Activate()); }
  void keepShown(const Document& document) {
    show(document);
    listener.onSelectionChanged = [this, document] { show(document); };
  }

  /// The contents of a document: names, texts, marks and formulas of all its pages and shapes.
  static std::string contents(const Document& document) {
    std::string out;
    const auto sheet = [&](const Shape& shape) {
      std::vector<std::string> cells;
      for (const int section :
           {1, 8, visio::sectionAction, visio::sectionUser, visio::sectionProp, visio::sectionHyperlink}) {
        for (int row = 0; row < std::max(shape.RowCount(section).or_(0), section == 1 ? 1 : 0); ++row) {
          for (int column = 0; column < 9; ++column) {
            const Cell cell = shape.CellsSRC(section, row, column);
            if (cell)
              cells.push_back("    " + cell.Name().or_("?") + " = " + cell.Formula().or_("?") + " : " +
                              cell.ResultStr(0).or_("?") + "\n");
          }
        }
      }
      // A row of the document that is deleted and added at each opening changes its place.
      if (shape == document.DocumentSheet()) std::ranges::sort(cells);
      for (const std::string& cell : cells) out += cell;
    };
    std::function<void(const Shape&)> shape = [&](const Shape& each) {
      out += "  " + each.NameID().or_("?") + " \"" + each.Name().or_("?") + "\" " + each.Text().or_("?") + " " +
             each.Data1().or_("?") + " " + each.Data2().or_("?") + " " + each.Data3().or_("?") + "\n";
      sheet(each);
      for (const Shape& member : each.Shapes().all()) shape(member);
    };
    sheet(document.DocumentSheet());
    for (const Page& each : document.Pages().all()) {
      out += each.Name().or_("?") + (each.Background() == true ? " background" : "") + "\n";
      sheet(each.PageSheet());
      for (int i = 1; i <= each.Layers().Count().or_(0); ++i)
        out += "  layer " + each.Layers().Item(i).Name().or_("?") + "\n";
      for (const Shape& top : each.Shapes().all()) shape(top);
    }
    return out;
  }
  /// Shapes that are drawn again get other numbers.
  static std::string withoutNumbers(const std::string& contents) {
    static const std::regex number("[Ss]heet\\.[0-9]+");
    return std::regex_replace(contents, number, "Sheet");
  }
  static void expectEqual(const std::string& expected, const std::string& actual, const std::string& what) {
    if (expected == actual) return;
    std::size_t line = 0;
    for (std::size_t at = 0; at < std::min(expected.size(), actual.size()) && expected[at] == actual[at]; ++at)
      if (expected[at] == '\n') line = at + 1;
    const auto from = [&](const std::string& text) { return text.substr(line, text.find('\n', line) - line); };
    ADD_FAILURE() << what << ": expected \"" << from(expected) << "\", found \"" << from(actual) << "\"";
  }

  /// Nearly all that a user does on a map.
  void work(const Document& document) {
    const Page added = document.Pages().Add();
    ASSERT_TRUE(added.SetName(std::string("XY Added")));
    for (const Page& each : {document.Pages().Item(1), added}) {
      const Shape task = dropTask(each), second = dropTask(each, 6);
      const Shape link = drop(each, "Task Link", 4, 3), connector = drop(each, "Process Connector", 6, 3);
      ASSERT_TRUE(task && second && link && connector) << lastRefusal();
      for (const auto& [cell, value] : {std::pair{"Prop.Guidelines", "Ask first;Sign"},
                                        {"Prop.Resources", "Form"},
                                        {"Prop.Responsible_Role", "Clerk"},
                                        {"Prop.SupportingRole_2", "Director"},
                                        {"Prop.Frequency_Of_Occurrence", "Weekly"}}) {
        EXPECT_TRUE(task.Cells(cell).SetFormula("\"" + std::string(value) + "\"")) << cell;
      }
      EXPECT_TRUE(task.Cells("Prop.Task_Completion_Time").SetFormula(std::string("5")));
      EXPECT_TRUE(task.Cells("Width").SetResult(visio::unitsInches, 3.0));
      link.Cells("User.TaskLink_Visible").SetResult(0, 1.0);
      EXPECT_TRUE(link.Cells("Prop.Time_Between_Tasks").SetFormula(std::string("3")));
      EXPECT_TRUE(link.Cells("Prop.Task_Link").SetFormula(std::string("\"Send\"")));
      EXPECT_TRUE(marked(each, "Logo").Cells("PinX").SetResult(visio::unitsInches, 100.0));
      EXPECT_FALSE(marked(each, "Legend").Duplicate());
    }
  }
};

TEST_F(OtherDocuments, AMapIsTheSameWhileOthersAreShown) {
  openMap();
  openOther();
  openForeign();
  const std::string untouchedOther = contents(other), untouchedForeign = contents(foreign);
  const std::string file = testing::TempDir() + "quorvel-hidden-" + std::to_string(getpid()) + ".vsdx";
  ASSERT_TRUE(map.SaveAs(file)) << lastRefusal();

  show(map);
  work(map);
  const std::string expected = contents(map);
  EXPECT_EQ(lettersAsked, (std::vector<std::string>{"AB", "XY"}));
  EXPECT_NE(expected.find("Send (3m)"), std::string::npos);
  EXPECT_NE(expected.find("WK:"), std::string::npos);
  map.Close();

  const Document hidden = app.Documents().OpenEx(file, 64);
  ASSERT_TRUE(hidden) << lastRefusal();
  for (const Document& shown : {other, foreign}) {
    show(shown);
    lettersAsked.clear();
    const Document copy = shown == other ? hidden : app.Documents().OpenEx(file, 1 | 64);
    EXPECT_FALSE(windowOf(copy));
    work(copy);
    expectEqual(expected, contents(copy), "a map without a window");
    EXPECT_EQ(lettersAsked, (std::vector<std::string>{"AB", "XY"}));
    EXPECT_EQ(app.ActiveDocument(), shown);
  }
  for (const Document& shown : {other, foreign}) {
    const Document copy = app.Documents().OpenEx(file, 1);
    ASSERT_TRUE(copy);
    keepShown(shown);
    lettersAsked.clear();
    std::vector<Page> asking;
    const auto answers = session.platform().onForm;
    session.platform().onForm = [&](Form& form) {
      asking.push_back(app.ActivePage());
      answers(form);
      show(shown);
    };
    work(copy);
    expectEqual(expected, contents(copy), "a map behind another drawing");
    EXPECT_EQ(lettersAsked, (std::vector<std::string>{"AB", "XY"}));
    EXPECT_EQ(asking, (std::vector<Page>{copy.Pages().Item(1), copy.Pages().Item(2)}))
        << "the page that is asked about is shown";
    session.platform().onForm = answers;
    listener.onSelectionChanged = {};
  }
  std::filesystem::remove(file);
  expectEqual(untouchedOther, contents(other), "the other map");
  expectEqual(untouchedForeign, contents(foreign), "the foreign drawing");
}

TEST_F(OtherDocuments, AnotherDrawingIsNotChangedWhileAMapIsShown) {
  openForeign();
  const Page there = foreign.Pages().Item(1);
  const Shape task = dropTask(there), link = drop(there, "Task Link", 4, 3);
  const Shape box = there.DrawRectangle(1, 1, 2, 2);
  box.SetData1(std::string("Logo"));
  openMap();
  ASSERT_TRUE(dropTask(page));
  const std::string before = contents(map);

  const Page added = foreign.Pages().Add();
  EXPECT_EQ(added.Shapes().Count(), 0);
  EXPECT_EQ(added.PageSheet().RowCount(visio::sectionUser), 0);
  EXPECT_EQ(added.Layers().Count(), 0);
  const Shape copy = task.Duplicate();
  ASSERT_TRUE(copy);
  EXPECT_EQ(copy.CellExists("User.AlreadyAdded", 1), false);
  EXPECT_TRUE(box.Duplicate()) << "another drawing may have a decoration twice";
  EXPECT_TRUE(box.Duplicate());
  ASSERT_TRUE(box.Cells("PinX").SetResult(visio::unitsInches, 100.0));
  EXPECT_EQ(number(box, "PinX"), 100);
  const int members = task.Shapes().Count().or_(-1);
  task.Cells("Prop.Guidelines").SetFormula(std::string("\"Ask\""));
  task.Cells("Width").SetResult(visio::unitsInches, 4.0);
  EXPECT_EQ(task.Shapes().Count(), members);
  EXPECT_EQ(link.CellExists("User.AlreadyAdded", 1), false);
  expectEqual(before, contents(map), "the map");
}

TEST_F(OtherDocuments, ALinkCopiedToAnotherDrawingKeepsItsText) {
  openMap();
  const Shape link = drop(page, "Task Link");
  link.Cells("User.TaskLink_Visible").SetResult(0, 1.0);
  link.Cells("Prop.Task_Link").SetFormula(std::string("\"Send\""));
  link.Cells("Prop.Time_Between_Tasks").SetFormula(std::string("3"));
  ASSERT_EQ(link.Text(), "Send (3m)");
  openForeign();
  show(foreign);
  ASSERT_TRUE(link.Cells("Prop.Time_Between_Tasks").SetFormula(std::string("4")));
  EXPECT_EQ(link.Text(), "Send (4m)");
  show(map);
  app.ActiveWindow().Select(link, visio::select);
  ASSERT_TRUE(app.ActiveWindow().Selection().Copy());
  ASSERT_TRUE(foreign.Pages().Item(1).Paste());
  const Shape there = foreign.Pages().Item(1).Shapes().Item(1);
  for (const Document& shown : {map, foreign}) {
    show(shown);
    ASSERT_TRUE(there.Cells("Prop.Time_Between_Tasks").SetFormula(shown == map ? std::string("6") : std::string("7")));
    EXPECT_EQ(there.Text(), shown == map ? "Send (6m)" : "Send (7m)");
  }
}

TEST_F(OtherDocuments, AMapThatIsNotShownIsPreparedToo) {
  openForeign();
  // A listener before the add-in shows another drawing while the map is made.
  addin::dsrVisioConnect& connect = session.addin();
  connect.AddinInstance_OnDisconnection();
  connect.AddinInstance_OnConnection(app);
  listener.onDocumentCreated = [this] { show(foreign); };
  newMap();
  EXPECT_EQ(app.ActiveDocument(), foreign);
  EXPECT_EQ(foreign.DocumentSheet().RowCount(visio::sectionUser), 0);
  EXPECT_EQ(foreign.Protection(), 0);
  EXPECT_EQ(foreign.Pages().Item(1).Shapes().Count(), 0);
  EXPECT_EQ(number(map.DocumentSheet(), "User.Based_On_ZNB"), 1);
  EXPECT_EQ(map.Protection(), visio::protectShapes);
  EXPECT_EQ(countMarked(map.Pages().Item(1), "Logo"), 1);
}

TEST_F(OtherDocuments, OnlyTheSelectionOfTheSameDrawingIsChanged) {
  openMap();
  const Shape task = dropTask(page);
  openForeign();
  const Page there = foreign.Pages().Item(1);
  const Shape box = there.DrawRectangle(1, 1, 2, 2), task2 = dropTask(there);
  const std::string placeholder = text(task2, "Prop.Task_Description");
  const auto selectInForeign = [&] {
    app.ActiveWindow().DeselectAll();
    for (const Shape& each : {box, task2}) ASSERT_TRUE(app.ActiveWindow().Select(each, visio::select));
  };
  selectInForeign();
  task.Cells("Prop.Guidelines").SetFormula(std::string("\"Ask\""));
  map.Pages().Add();
  EXPECT_EQ(app.ActiveWindow().Selection().Count(), 2) << "a redraw and a new page deselect in their own drawing only";
  listener.onSelectionChanged = [&] { show(foreign); };
  const Shape dropped = drop(map.Pages().Item(2), "Task Link");
  EXPECT_EQ(text(dropped, "Prop.Task_Link"), "Task Link");
  EXPECT_EQ(text(task2, "Prop.Task_Description"), placeholder);
  listener.onSelectionChanged = {};

  // A batch of pasted shapes ends with the selection of a map, not with that of another drawing.
  addin::dsrVisioConnect& connect = session.addin();
  show(map);
  app.ActiveWindow().SetPage(page);
  connect.flagShapeAdded = false;
  connect.flagTimeUnitAbbr = true;
  windowOf(foreign).DeselectAll();
  EXPECT_FALSE(connect.flagShapeAdded);
  EXPECT_TRUE(connect.flagTimeUnitAbbr);
  show(foreign);
  windowOf(map).Select(task, visio::select);
  EXPECT_TRUE(connect.flagShapeAdded);
  EXPECT_FALSE(connect.flagTimeUnitAbbr);
}

TEST_F(OtherDocuments, AnAnswerForOneMapIsNotUsedForAnother) {
  openMap();
  openOther();
  const Shape task = dropTask(page), there = dropTask(other.Pages().Item(1), 6);
  std::vector<Page> asked;
  session.platform().onMessage = [&](const MessageBox&) {
    asked.push_back(app.ActivePage());
    return MessageAnswer::Yes;
  };
  const auto arriveIn = [&](const Document& document, const Shape& shape, const std::string& abbreviations) {
    const Cell list = document.DocumentSheet().Cells("User.Time_Unit_Disply");
    const std::string before = list.Formula().or_({});
    list.FormulaForce("\"" + abbreviations + "\"");
    shape.Cells("Prop.Time_Units").SetFormula(std::string("\"Minutes\""));
    shape.Cells("Prop.Task_Completion_Time").SetFormula(std::string("5"));
    list.FormulaForce(before);
  };
  arriveIn(map, task, "s;mi;h;d;w");
  arriveIn(other, there, "S;MN;H;D;W");
  const Window here = windowOf(map), window = windowOf(other);
  here.Select(task, visio::select);
  window.DeselectAll();
  window.Select(there, visio::select);
  const Selection arrived = here.Selection(), arrivedThere = window.Selection();
  for (const Selection& selection : {arrived, arrivedThere}) {
    show(foreign = newDocument(""));
    addin::CheckTimeUnitDisplay(session.addin(), selection, false, false);
  }
  EXPECT_EQ(asked, (std::vector<Page>{page, other.Pages().Item(1)}))
      << "each question is asked on the page of its shape";
  EXPECT_EQ(text(map.DocumentSheet(), "User.Time_Unit_Disply"), "s;mi;h;d;w;");
  EXPECT_EQ(text(other.DocumentSheet(), "User.Time_Unit_Disply"), "S;MN;H;D;W;");
}

TEST_F(OtherDocuments, ThePointerDoesNotChangeShapesWithoutIndicators) {
  openMap();
  const Shape task = dropTask(page), ours = page.DrawRectangle(1, 1, 2, 2);
  openForeign();
  const Shape box = foreign.Pages().Item(1).DrawRectangle(1, 1, 2, 2);
  const auto invisible = [](const Shape& shape) {
    return shape.CellsSRC(visio::sectionHyperlink, 0, visio::columnHyperlinkInvisible);
  };
  for (const Shape& shape : {task, ours, box}) {
    shape.AddHyperlink().SetAddress(std::string("a.doc"));
    ASSERT_TRUE(invisible(shape).FormulaForce(std::string(shape == task ? "0" : "1")));
  }
  const Shape mark = task.DrawRectangle(0, 0, 0.2, 0.2);
  mark.SetData1(std::string("pic_indicatesNotes"));
  const double left = number(task, "PinX") - number(task, "Width") / 2,
               bottom = number(task, "PinY") - number(task, "Height") / 2;
  for (const Document& shown : {map, foreign}) {
    show(shown);
    for (const auto& [x, y] : {std::pair{0.1, 0.1}, {1.5, 1.5}, {left + 0.1, bottom + 0.1}})
      session.host().mouseMove(0, 0, x, y);
  }
  EXPECT_EQ(invisible(task).Result(0), 1);
  EXPECT_EQ(invisible(ours).Result(0), 1);
  EXPECT_EQ(invisible(box).Result(0), 1);
  show(map);
  session.host().mouseMove(0, 0, 0.1, 0.1);
  EXPECT_EQ(invisible(task).Result(0), 0);
  EXPECT_EQ(invisible(ours).Result(0), 1);
}

/// Commands whose dialog is open while a handler shows another drawing and another page.
class HeldByADialog : public OtherDocuments {
 protected:
  Shape task, link;
  Page next;
  Shape elsewhere;

  void SetUp() override {
    OtherDocuments::SetUp();
    openMap();
    task = dropTask(page);
    link = drop(page, "Task Link", 4, 3);
    for (const auto& [cell, value] : {std::pair{"Prop.Resources", "Form"},
                                      {"Prop.Responsible_Role", "Clerk"},
                                      {"Prop.Frequency_Of_Occurrence", "Weekly"}})
      task.Cells(cell).SetFormula("\"" + std::string(value) + "\"");
    task.Cells("Prop.Task_Completion_Time").SetFormula(std::string("5"));
    next = map.Pages().Add();
    elsewhere = dropTask(next);
    openOther();
    openForeign();
  }
  /// Shows the first page with `selected`, runs the command, answers its dialog with `act`, and meanwhile shows another
  /// page of the map and then each other drawing. Returns the map's contents afterwards, with the first page shown
  /// again.
  std::string run(const Document& shown, const std::vector<Shape>& selected,
                  const std::function<void(addin::dsrVisioConnect&)>& command, const std::function<void(Form&)>& act) {
    show(map);
    const Window window = windowOf(map);
    window.SetPage(page);
    window.DeselectAll();
    for (const Shape& each : selected) EXPECT_TRUE(window.Select(each, visio::select));
    const std::string before = contents(map);
    session.platform().onForm = [&](Form& form) {
      if (shown != map) {
        window.SetPage(next);
        show(shown);
      }
      act(form);
    };
    command(session.addin());
    EXPECT_EQ(app.ActiveDocument(), shown) << "nothing but a question about a drop shows another page";
    const std::string after = contents(map);
    EXPECT_NE(before, after) << "the command did something";
    show(map);
    EXPECT_TRUE(app.Undo()) << "the step is one of the map";
    while (contents(map) != before && app.Undo()) continue;
    expectEqual(before, contents(map), "after undo");
    return withoutNumbers(after);
  }
};

TEST_F(HeldByADialog, EachCommandWorksOnWhatWasShownWhenItsDialogOpened) {
  const std::string untouchedOther = contents(other), untouchedForeign = contents(foreign);
  const auto scoped = [](const char* scope, std::vector<const char*> clicks) {
    return [=](Form& form) {
      for (const char* box : clicks) EXPECT_TRUE(form.find(box)->click()) << box;
      EXPECT_TRUE(form.find(scope)->click()) << scope;
      form.find("BtnOK")->click();
    };
  };
  const auto roles = [](Form& form) {
    if (form.name() == "frmNewRoleName") {
      form.find("txtNewRoleName")->type("Bookkeeper");
      form.find("btnOK")->click();
      return;
    }
    Control& list = *form.find("lstRoleNames");
    for (std::size_t i = 0; i < list.rows().size(); ++i) {
      if (list.rows()[i].text() == "Clerk") list.selectRow(i);
    }
    form.find("btnEdit")->click();
    form.find("btnClose")->click();
  };
  const auto options = [](Form& form) {
    form.find("Text1(1)")->type("mi");
    form.find("Text2(5)")->type("WY");
    form.find("btnApplyAndClose")->click();
  };
  const auto renumbered = [](const char* scope) {
    return [=](Form& form) {
      EXPECT_TRUE(form.find(scope)->click());
      form.find("txtTaskNumber")->type("40");
      form.find("Command2")->click();
    };
  };
  const struct {
    const char* name;
    std::function<void(addin::dsrVisioConnect&)> command;
    std::function<void(Form&)> act;
    std::vector<Shape> selected;
  } cases[] = {
      {"display off, selection", addin::cbrBtnTaskdisplay_Click, scoped("OptionSelected", {}), {task}},
      {"display off, page", addin::cbrBtnTaskdisplay_Click, scoped("OptionPage", {}), {task}},
      {"display off, drawing", addin::cbrBtnTaskdisplay_Click, scoped("OptionDrawing", {}), {}},
      {"options, selection", addin::cbrBtnTaskDisplayOption_Click, scoped("OptionSelected", {"chkResources"}), {task}},
      {"options, page", addin::cbrBtnTaskDisplayOption_Click, scoped("OptionPage", {"chkResources"}), {}},
      {"options, drawing", addin::cbrBtnTaskDisplayOption_Click, scoped("OptionDrawing", {"chkResources"}), {}},
      {"links, selection",
       addin::cbrBtnTaskLinkDisplayOption_Click,
       scoped("OptionSelected", {"chkTimeBetweenTasks"}),
       {link}},
      {"links, drawing",
       addin::cbrBtnTaskLinkDisplayOption_Click,
       scoped("OptionDrawing", {"chkTimeBetweenTasks"}),
       {}},
      {"roles", addin::cbrBtnCustomizeRoleName_Click, roles, {}},
      {"units and frequencies", addin::cbrQuorvelOption_Click, options, {}},
      {"renumbering, selection", addin::cbrBtnRenumberTasks_Click, renumbered("Option1"), {task}},
      {"renumbering, page", addin::cbrBtnRenumberTasks_Click, renumbered("Option2"), {}},
  };
  for (const auto& c : cases) {
    const std::string expected = run(map, c.selected, c.command, c.act);
    for (const Document& shown : {other, foreign})
      expectEqual(expected, run(shown, c.selected, c.command, c.act), c.name);
  }

  // The drawing that a dialog is about is closed while it is open.
  const std::string file = testing::TempDir() + "quorvel-held-" + std::to_string(getpid()) + ".vsdx";
  ASSERT_TRUE(map.SaveAs(file)) << lastRefusal();
  for (const auto& c : cases) {
    show(map);
    windowOf(map).SetPage(map.Pages().Item(1));
    windowOf(map).DeselectAll();
    if (!c.selected.empty()) windowOf(map).Select(map.Pages().Item(1).Shapes().Item(4), visio::select);
    session.platform().onForm = [&](Form& form) {
      map.Close();
      c.act(form);
    };
    c.command(session.addin());
    map = app.Documents().Open(file);
    ASSERT_TRUE(map) << c.name;
  }
  std::filesystem::remove(file);
  expectEqual(untouchedOther, contents(other), "the other map");
  expectEqual(untouchedForeign, contents(foreign), "the foreign drawing");
}

class PageKinds : public OtherDocuments {};

TEST_F(PageKinds, ABackgroundPageKeepsNothingOfTheAddinWhenNothingElseIsOnIt) {
  openMap();
  const Page background = map.Pages().Add();
  ASSERT_TRUE(background.SetBackground(true));
  EXPECT_EQ(background.Shapes().Count(), 0);
  EXPECT_EQ(background.PageSheet().RowCount(visio::sectionUser), 0);
  EXPECT_EQ(background.Layers().Count(), 0);
  ASSERT_TRUE(app.Undo()) << "it is part of the step";
  EXPECT_EQ(background.Background(), false);
  EXPECT_EQ(background.Shapes().Count(), 3);
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(background.Shapes().Count(), 0);

  // A page that becomes a foreground page is part of the map again.
  ASSERT_TRUE(background.SetBackground(false));
  EXPECT_EQ(background.Shapes().Count(), 3);
  EXPECT_EQ(text(dropTask(background), "Prop.Task_ID"), "Z01");

  // With any shape or cell of the user's, nothing is deleted.
  ASSERT_TRUE(background.SetBackground(true));
  EXPECT_EQ(background.Shapes().Count(), 4);
  EXPECT_EQ(number(background.PageSheet(), "User.Next_Task_Id"), 2);
  const std::function<void(const Page&)> touches[] = {
      [](const Page& touched) { touched.Shapes().Item(3).SetText(std::string("Orders")); },
      [](const Page& touched) { touched.DrawRectangle(1, 1, 2, 2); },
      [](const Page& touched) { touched.Shapes().Item(3).Cells("PinX").SetResult(visio::unitsInches, 4.0); },
      [](const Page& touched) { touched.Shapes().Item(2).Cells("PinY").SetResult(visio::unitsInches, 4.0); },
  };
  for (const auto& touch : touches) {
    const Page touched = map.Pages().Add();
    touch(touched);
    const int shapes = touched.Shapes().Count().or_(-1);
    ASSERT_TRUE(touched.SetBackground(true));
    EXPECT_EQ(touched.Shapes().Count(), shapes);
    EXPECT_EQ(touched.PageSheet().CellExists("User.Task_Visible", 1), true);
  }

  // In a drawing that is no map, no shape counts as a decoration.
  openForeign();
  const Page there = foreign.Pages().Add();
  there.DrawRectangle(1, 1, 2, 2).SetData1(std::string("Logo"));
  show(map);
  ASSERT_TRUE(there.SetBackground(true));
  EXPECT_EQ(there.Shapes().Count(), 1);
  ASSERT_TRUE(there.SetBackground(false));
  EXPECT_EQ(there.Shapes().Count(), 1);
}

TEST_F(PageKinds, DecorationsWithALateAddEventStay) {
  openMap();
  const Shape box = page.DrawRectangle(1, 1, 2, 2);
  Page added;
  listener.onBeforeShapeDelete = [&](const Shape&) { added = map.Pages().Add(); };
  ASSERT_TRUE(box.Delete());
  ASSERT_TRUE(added);
  EXPECT_EQ(countMarked(added, "Logo"), 1);
  EXPECT_EQ(countMarked(added, "Legend"), 1);
  EXPECT_FALSE(marked(added, "Logo").Duplicate()) << "a second one is still removed";
  EXPECT_EQ(countMarked(added, "Logo"), 1);

  // A page that has lost its legend takes one from another page, and of two it keeps one.
  listener.onBeforeShapeDelete = {};
  ASSERT_TRUE(marked(added, "Legend").Delete());
  const Window window = windowOf(map);
  window.SetPage(page);
  window.Select(marked(page, "Legend"), visio::select);
  ASSERT_TRUE(window.Selection().Copy());
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(added.Paste());
    EXPECT_EQ(countMarked(added, "Legend"), 1);
  }
}

}  // namespace
}  // namespace quorvel
