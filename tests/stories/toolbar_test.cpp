// The toolbar and the host's menus while maps are open, and the commands that are started there.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class Toolbar : public MapTest {
 protected:
  const std::string folder = testing::TempDir() + "quorvel-toolbar-" + std::to_string(getpid()) + "/";

  void SetUp() override {
    MapTest::SetUp();
    std::filesystem::create_directories(folder);
  }
  void TearDown() override {
    MapTest::TearDown();
    std::filesystem::remove_all(folder);
  }

  CommandBar bar() {
    for (int i = 1; i <= app.CommandBars().Count().or_(0); ++i) {
      const CommandBar each = app.CommandBars().Item(i);
      if (each.Name() == "Quorvel") return each;
    }
    return {};
  }
  CommandBarControl button(const char* tag) {
    for (const CommandBarControl& each : bar().Controls().all()) {
      if (each.Tag() == tag) return each;
    }
    return {};
  }
  std::vector<CommandBarControl> insertMenu() { return app.CommandBars().FindControl(30005).Controls().all(); }
  /// What the host's hyperlink item queues; empty while it is the host's own.
  std::string hyperlinkItem() { return insertMenu().front().Parameter().or_("?"); }
  std::string profile(const char* key) {
    return session.platform().readProfile("quorvel.INI", "Toolbar", key, "(none)", 100);
  }
};

TEST_F(Toolbar, ExistsWhileAMapIsOpenAndShowsWhileOneIsActive) {
  EXPECT_FALSE(bar()) << "a stencil is no map";
  EXPECT_EQ(hyperlinkItem(), "");
  newMap("A One");
  ASSERT_TRUE(bar());
  EXPECT_TRUE(bar().Visible() == true && bar().Context() == "2*" && bar().Protection() == 1);
  std::string tags;
  for (const CommandBarControl& each : bar().Controls().all())
    tags += (each.BeginGroup() == true ? "| " : "") + each.Tag().or_("?") + " ";
  EXPECT_EQ(tags,
            "TaskLinkDisplayOption TaskDisplay Taskdisplayoption RenumberTasks | customizeRoleName QuorvelOption "
            "QuorvelReports | AskQVExpert QVHelp AboutQuorvel ");
  std::ptrdiff_t transparent = 0;
  for (const CommandBarControl& each : bar().Controls().all()) {
    const auto& face = session.engine().bars().control(each.ref().id)->face;
    ASSERT_TRUE(face) << each.Tag().or_("?");
    EXPECT_EQ(face->width, 16);
    EXPECT_EQ(face->height, 16);
    for (std::size_t i = 0; i < face->mask.size(); ++i) EXPECT_EQ(face->mask[i], face->colours[i] == 0xD4DCDC);
    transparent += std::ranges::count(face->mask, true);
  }
  EXPECT_GT(transparent, 0);
  EXPECT_EQ(hyperlinkItem(), "/soln=Quorvel.Quorvel /cmd=1");
  ASSERT_EQ(insertMenu().size(), 2u);
  EXPECT_EQ(insertMenu().back().Caption(), "L&ast Save Date/Time");

  // A foreign drawing comes to the front, and the map again.
  ASSERT_TRUE(app.Documents().Add(std::string()));
  EXPECT_EQ(bar().Visible(), false);
  EXPECT_EQ(hyperlinkItem(), "");
  EXPECT_EQ(insertMenu().size(), 1u);
  for (const Window& window : app.Windows().all()) {
    if (window.Document() == map) window.Activate();
  }
  EXPECT_TRUE(bar().Visible() == true);
  EXPECT_EQ(hyperlinkItem(), "/soln=Quorvel.Quorvel /cmd=1");

  const Document second = app.Documents().Add(session.templatePath());
  EXPECT_EQ(std::ranges::count_if(insertMenu(), [](auto& each) { return each.Caption() == "L&ast Save Date/Time"; }),
            1);
  ASSERT_TRUE(map.Close());
  EXPECT_TRUE(bar()) << "another map is open";
  ASSERT_TRUE(second.Close());
  EXPECT_FALSE(bar()) << "although a foreign drawing is open";
  EXPECT_EQ(hyperlinkItem(), "");
  EXPECT_EQ(insertMenu().size(), 1u);
  newMap("A Two");
  EXPECT_TRUE(bar());
}

TEST_F(Toolbar, ComesBackWhereItWas) {
  struct Case {
    int position;
    std::string place;  ///< left, top, height, width, row
  };
  for (const Case& each :
       {Case{1, "40 0 0 0 2"}, Case{3, "40 0 0 0 2"}, Case{0, "0 30 0 0 2"}, Case{4, "40 30 20 10 2"}}) {
    newMap();
    const CommandBar before = bar();
    before.SetPosition(each.position);
    before.SetLeft(40);
    before.SetTop(30);
    before.SetHeight(20);
    before.SetWidth(10);
    before.SetRowIndex(2);
    ASSERT_TRUE(map.Close());
    EXPECT_EQ(profile("Position"), std::to_string(each.position));
    EXPECT_EQ(profile("Left") + profile("Top") + profile("Height") + profile("Width") + profile("RowIndex"),
              "403020102");
    newMap();
    const CommandBar after = bar();
    EXPECT_EQ(after.Position(), each.position);
    const auto text = [](const Maybe<int>& number) { return std::to_string(number.or_(-1)); };
    EXPECT_EQ(text(after.Left()) + " " + text(after.Top()) + " " + text(after.Height()) + " " + text(after.Width()) +
                  " " + text(after.RowIndex()),
              each.place);
    ASSERT_TRUE(map.Close());
  }
}

TEST_F(Toolbar, EachButtonRunsItsCommand) {
  const Page page = newMap("A One");
  const Shape task = dropTask(page);
  struct Case {
    const char *tag, *opens;
  };
  for (const Case& each :
       {Case{"TaskLinkDisplayOption", "TaskLinkDisplayOption"}, Case{"TaskDisplay", "frmTaskDisplay"},
        Case{"Taskdisplayoption", "frmTaskDisplayOption"}, Case{"RenumberTasks", "frmTaskRenumberingOption"},
        Case{"customizeRoleName", "frmCustomizeRoleNames"}, Case{"QuorvelOption", "frmTaskOption"},
        Case{"AskQVExpert", "mailto:support@quorvel.example?subject=HELP&body="},
        Case{"QVHelp", QUORVEL_SOURCE_FOLDER "/data/Help/Quorvel_Help_v04.hlp"}, Case{"AboutQuorvel", "frmAbout"}}) {
    session.platform().asked.clear();
    EXPECT_TRUE(button(each.tag).Execute()) << each.tag;
    ASSERT_FALSE(session.platform().asked.empty()) << each.tag;
    EXPECT_EQ(session.platform().asked.front().text, each.opens);
  }
  EXPECT_TRUE(std::filesystem::exists(QUORVEL_SOURCE_FOLDER "/data/Help/Quorvel_Help_v04.hlp"));

  // The button of the details is down while the selected Task shows them.
  const Window window = app.ActiveWindow();
  window.DeselectAll();
  window.Select(task, visio::select);
  EXPECT_EQ(button("TaskDisplay").State(), -1);
  ASSERT_TRUE(task.Cells("User.Task_Visible").SetResult(visio::unitsNone, 0));
  window.DeselectAll();
  EXPECT_EQ(button("TaskDisplay").State(), -1) << "the page";
  window.Select(task, visio::select);
  EXPECT_EQ(button("TaskDisplay").State(), 0);
}

TEST_F(Toolbar, AboutTellsTheVersions) {
  newMap("A One");
  bool wasShown = false;
  session.platform().onForm = [&](Form& form) {
    wasShown = true;
    const auto caption = [&](const char* control) { return form.find(control)->caption(); };
    EXPECT_EQ(caption("lblQuorvelTemplateVersion"), text(map.DocumentSheet(), "User.Quorvel_Template_Version"));
    EXPECT_EQ(caption("lblQuorvelStencilVersion"), text(stencil.DocumentSheet(), "User.Quorvel_Stencil_Version"));
    EXPECT_EQ(caption("lblInstallPath"), QUORVEL_SOURCE_FOLDER "/data");
    EXPECT_EQ(caption("lblVisioVersion"), "Visio 2007 (12.0)");
    Control& address = *form.find("Label1");
    EXPECT_EQ(address.foreColour(), 16711680);
    address.mouseDown();
    EXPECT_EQ(address.foreColour(), 255);
    address.mouseMove();
    EXPECT_EQ(address.foreColour(), 16711680);
    address.click();
    form.find("Command1")->click();
    EXPECT_FALSE(form.isOpen());
  };
  ASSERT_TRUE(button("AboutQuorvel").Execute());
  EXPECT_TRUE(wasShown);
  EXPECT_EQ(session.platform().asked.back().text, "https://quorvel.example");
}

TEST_F(Toolbar, TheDateOfTheLastSaveIsPutIntoPlainShapes) {
  const Page page = newMap("A One");
  const Shape task = dropTask(page), plain = page.DrawRectangle(6, 1, 8, 2);
  ASSERT_TRUE(plain.SetText("saved"));
  const Window window = app.ActiveWindow();
  window.Select(task, visio::select);
  window.Select(plain, visio::select);
  const auto insert = [&](int row, const char* press, int preselected) {
    session.platform().onForm = [=](Form& form) {
      Control& list = *form.find("lstFormats");
      EXPECT_EQ(list.rows().size(), 17u);
      EXPECT_EQ(list.selectedRow(), preselected);
      list.selectRow(static_cast<std::size_t>(row));
      form.find(press)->click();
    };
    EXPECT_TRUE(insertMenu().back().Execute());
  };
  const auto fields = [&] {
    std::string formulas;
    for (int i = 1; i <= plain.RowCount(8).or_(0); ++i)
      formulas += plain.Cells("Fields.Value[" + std::to_string(i) + "]").Formula().or_("?") + " " +
                  plain.Cells("Fields.Format[" + std::to_string(i) + "]").Formula().or_("?") + ";";
    return formulas;
  };
  insert(4, "Command2", -1);
  EXPECT_EQ(fields(), "");
  insert(4, "cmdOk", -1);
  EXPECT_EQ(fields(), "DOCLASTSAVE() FIELDPICTURE(204);");
  EXPECT_TRUE(plain.Text().or_({}).ends_with("saved"));
  insert(0, "cmdOk", 4);
  EXPECT_EQ(fields(), "DOCLASTSAVE() FIELDPICTURE(200);DOCLASTSAVE() FIELDPICTURE(204);");
  EXPECT_EQ(task.Shapes().Item(4).Text(), text(task, "Prop.Task_Description"));
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(fields(), "DOCLASTSAVE() FIELDPICTURE(204);");
}

/// What a file holds, read without the add-in.
TEST_F(Toolbar, TheFileSaysThatTheAddinIsNotThere) {
  const Page page = newMap("A One");
  dropTask(page);
  const auto inFile = [&](const std::string& file, const char* cell) {
    SessionOptions plain = options();
    plain.connectAddin = false;
    Session other(plain);
    const Document document = other.app().Documents().Open(file);
    return text(document.DocumentSheet(), cell);
  };
  const Shape sheet = map.DocumentSheet();
  EXPECT_EQ(text(sheet, "User.DocumentSaved"), "False");
  for (const char* name : {"map.vsdx", "map.vdx", ""}) {
    const std::string file = folder + (*name ? name : "map.vdx");
    ASSERT_TRUE(*name ? map.SaveAs(file) : map.Save()) << lastRefusal();
    EXPECT_EQ(text(sheet, "User.AddinIsFound"), "1");
    EXPECT_EQ(text(sheet, "User.DocumentSaved"), "TRUE");
    EXPECT_TRUE(map.Saved() == true);
    EXPECT_EQ(inFile(file, "User.AddinIsFound") + inFile(file, "User.DocumentSaved"), "0TRUE");
  }
  // A map that is not the active one is saved as itself.
  const Document active = app.Documents().Add(session.templatePath());
  ASSERT_TRUE(map.Save());
  EXPECT_EQ(text(active.DocumentSheet(), "User.DocumentSaved"), "False");

  // A Save As that ends without a file.
  EXPECT_FALSE(map.SaveAs(folder + "missing/map.vsdx"));
  EXPECT_EQ(text(sheet, "User.AddinIsFound"), "0");
  session.host().activateApplication();
  EXPECT_EQ(text(sheet, "User.AddinIsFound"), "1");

  ASSERT_TRUE(map.Close());
  map = app.Documents().Open(folder + "map.vdx");
  EXPECT_EQ(text(map.DocumentSheet(), "User.AddinIsFound"), "1");
  EXPECT_TRUE(map.Saved() == true);
  EXPECT_FALSE(app.Undo()) << "opening is no step";
}

}  // namespace
}  // namespace quorvel
