// A new drawing from the template: the cells of its document and pages, and the decorations of each page.
#include <gtest/gtest.h>

#include "document/document_created.h"
#include "document/initialize_document.h"
#include "document/initialize_page.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class NewMap : public MapTest {};

TEST_F(NewMap, CellsOfTheDocument) {
  newMap();
  const Shape sheet = map.DocumentSheet();
  EXPECT_EQ(map.Template(), "Quorvel.vstx");
  const struct {
    const char *cell, *formula;
  } cells[] = {
      {"User.Quorvel_dll_Version", "2.16"},
      {"User.lstSpr", "LISTSEP()"},
      {"User.Based_On_ZNB", "1"},
      {"User.DisableDefine", "0"},
      {"User.AddinIsFound", "1"},
      {"User.DocumentSaved", "\"False\""},
      {"User.Time_Unit", "\"Seconds;Minutes;Hours;Days;Weeks\""},
      {"User.Time_Unit.Prompt", "\"Minutes\""},
      {"User.Time_Unit_Disply", "\"s;m;h;d;w\""},
  };
  for (const auto& c : cells) EXPECT_EQ(sheet.Cells(c.cell).Formula(), c.formula) << c.cell;
  EXPECT_EQ(text(sheet, "User.lstSpr"), ",");
  EXPECT_TRUE(text(sheet, "User.RoleNames").starts_with(";Account Executive;"));
  EXPECT_TRUE(text(sheet, "User.FreqSuggestions").starts_with(";Ad Hoc;"));
  EXPECT_TRUE(text(sheet, "User.FreqSuggestions.Prompt").starts_with(";AD;IN;RE;"));
  EXPECT_EQ(map.Protection(), visio::protectShapes);
  EXPECT_FALSE(map.SetProtection("guess", 0));
  EXPECT_TRUE(map.SetProtection("Velmora1998", visio::protectShapes));
  EXPECT_FALSE(app.Undo()) << "making a drawing is not an undo step";
}

TEST_F(NewMap, AnExistingListIsKeptButFrequenciesAreReset) {
  newMap();
  const Shape sheet = map.DocumentSheet();
  sheet.Cells("User.RoleNames").FormulaForce("\";Clerk\"");
  sheet.Cells("User.Time_Unit").FormulaForce("\"Seconds;Hours\"");
  sheet.Cells("User.FreqSuggestions").FormulaForce("\";Never\"");
  addin::gvsoApp_DocumentCreated(session.addin(), map);
  EXPECT_EQ(text(sheet, "User.RoleNames"), ";Clerk");
  EXPECT_EQ(text(sheet, "User.Time_Unit"), "Seconds;Hours");
  EXPECT_TRUE(text(sheet, "User.FreqSuggestions").starts_with(";Ad Hoc;"));
}

TEST_F(NewMap, ForegroundPagesHaveCellsAndDecorationsOnce) {
  const Page first = newMap("AB Order entry");
  const Page second = map.Pages().Add();
  const Page background = map.Pages().Add();
  // A page is made as a foreground page; as a background page it never had the add-in's cells.
  for (const Shape& shape : background.Shapes().all()) {
    shape.Cells("LockDelete").FormulaForce("0");
    shape.Delete();
  }
  background.PageSheet().DeleteSection(visio::sectionUser);
  background.SetBackground(true);
  addin::initializeDocument(session.addin(), map);
  EXPECT_EQ(background.PageSheet().RowCount(visio::sectionUser), 0);
  EXPECT_EQ(background.Shapes().Count(), 0);

  for (const Page& page : {first, second}) {
    const Shape sheet = page.PageSheet();
    for (const char* on : {"Task_Visible", "Responsible_Role", "Controls", "Resources", "Supporting_Role1",
                           "Supporting_Role2", "Supporting_Role3", "Supporting_Role4", "Task_Completion_Time",
                           "Frequency_Of_Occurrence", "TaskLink_txt_Visible"}) {
      EXPECT_EQ(number(sheet, "User." + std::string(on)), 1) << on;
    }
    for (const char* off : {"TaskLink_Visible", "Next_Task_Id", "TimegreaterThanzero"}) {
      EXPECT_EQ(number(sheet, "User." + std::string(off)), 0) << off;
    }
    EXPECT_EQ(sheet.Cells("User.Task_Id_Letters").Formula(), "\"\"");
    EXPECT_EQ(page.Layers().Item("VisibleLayer").CellsC(visio::columnLayerVisible).Result(0), 1.0);
    EXPECT_EQ(page.Layers().Item("InvisibleLayer").CellsC(visio::columnLayerVisible).Result(0), 0.0);

    EXPECT_EQ(page.Shapes().Count(), 3);
    EXPECT_EQ(countMarked(page, "Logo"), 1);
    EXPECT_EQ(countMarked(page, "Legend"), 1);
    const Shape logo = marked(page, "Logo"), legend = marked(page, "Legend"), title = page.Shapes().Item(3);
    EXPECT_EQ(number(logo, "Width"), 1);
    EXPECT_EQ(number(logo, "Height"), 0.35);
    EXPECT_EQ(number(logo, "PinY"), 0.492125);
    EXPECT_FALSE(logo.Delete());
    EXPECT_EQ(logo.Hyperlinks().Count(), 1);
    EXPECT_EQ(number(legend, "Height"), 1.42);
    EXPECT_EQ(legend.Cells("PinX").Formula(), "ThePage!PageWidth-1 in");
    EXPECT_EQ(number(legend, "PinY"), 0.71 + 0.492125);
    EXPECT_EQ(legend.Hyperlinks().Item(0).Description(), "Double-click for a detailed explanation of the Task shape.");
    EXPECT_EQ(title.Text(), "Page Title");
    EXPECT_EQ(number(title, "PinX"), 2.75 + 0.492125);
    EXPECT_NEAR(title.Cells("Char.Size[1]").Result(visio::unitsPoints).or_(0), 18, 1e-9);

    // Decorations keep their distance to the edges of the page.
    ASSERT_TRUE(sheet.Cells("PageWidth").SetResult(visio::unitsInches, 20.0));
    EXPECT_EQ(number(legend, "PinX"), 19);
  }
  EXPECT_EQ(text(second.PageSheet(), "User.PAGE_NAME"), "Page-2");
}

TEST_F(NewMap, ALogoStaysOnItsPage) {
  const Page page = newMap();
  const Shape logo = marked(page, "Logo"), sheet = page.PageSheet();
  const double width = number(sheet, "PageWidth"), height = number(sheet, "PageHeight");
  const struct {
    const char* cell;
    double moved, stays;
  } cases[] = {
      {"PinX", width + 3, width - 0.5},
      {"PinX", width - 0.6, width - 0.6},
      {"PinX", 0.2, 0.5},
      {"PinY", height + 1, height - 0.275},
      {"PinY", 0.274, 0.55},
      {"PinY", 0.3, 0.3},
  };
  for (const auto& c : cases) {
    ASSERT_TRUE(logo.Cells(c.cell).SetResult(visio::unitsInches, c.moved));
    EXPECT_DOUBLE_EQ(number(logo, c.cell), c.stays) << c.cell << " moved to " << c.moved;
  }
  // The correction is part of the move.
  ASSERT_TRUE(app.Undo());
  EXPECT_DOUBLE_EQ(number(logo, "PinY"), 0.55);
  const Shape legend = marked(page, "Legend");
  ASSERT_TRUE(legend.Cells("PinY").SetResult(visio::unitsInches, -4.0));
  EXPECT_EQ(number(legend, "PinY"), -4);
}

TEST_F(NewMap, CopiesOfDecorationsAreRemoved) {
  const Page page = newMap();
  EXPECT_FALSE(marked(page, "Logo").Duplicate());
  EXPECT_EQ(countMarked(page, "Logo"), 1);
  const Window window = app.ActiveWindow();
  for (const char* mark : {"Logo", "Legend"}) window.Select(marked(page, mark), visio::select);
  ASSERT_TRUE(window.Selection().Copy());
  const Page next = map.Pages().Add();
  ASSERT_TRUE(next.Paste());
  EXPECT_EQ(next.Shapes().Count(), 3);
}

TEST_F(NewMap, SavedAndOpenedAgainEveryCellIsTheSame) {
  const Page page = newMap("AB Order entry");
  const Shape task = dropTask(page);
  drop(page, "Task Link", 4);
  drop(page, "Process Connector", 6);
  task.Cells("Prop.Notes").FormulaForce("\"a \"\"note\"\"\"");
  const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "quorvel-new-map.vsdx";
  ASSERT_TRUE(map.SaveAs(file.string())) << lastRefusal();

  Session again(options());
  const Document opened = again.app().Documents().Open(file.string());
  ASSERT_TRUE(opened);
  EXPECT_EQ(opened.Template(), "Quorvel.vstx");
  const Page there = opened.Pages().Item("AB Order entry");
  ASSERT_EQ(there.Shapes().Count(), page.Shapes().Count());
  asksForUnknownNames = true;
  const auto compare = [](const Shape& a, const Shape& b) {
    EXPECT_EQ(a.Name().or_("?"), b.Name().or_("!"));
    for (const int section : {visio::sectionUser, visio::sectionProp, visio::sectionAction, 8}) {
      const int rows = a.RowCount(section).or_(-1);
      ASSERT_EQ(rows, b.RowCount(section).or_(-2)) << a.Name().or_("?") << " section " << section;
      for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < 8; ++column) {
          const Cell x = a.CellsSRC(section, row, column), y = b.CellsSRC(section, row, column);
          if (!x) continue;
          EXPECT_EQ(x.Formula().or_("?"), y.Formula().or_("!")) << x.Name().or_("?");
          EXPECT_EQ(x.ResultStr(0).or_("?"), y.ResultStr(0).or_("!")) << x.Name().or_("?");
        }
      }
    }
    EXPECT_EQ(a.Text().or_("?"), b.Text().or_("!"));
    ASSERT_EQ(a.Shapes().Count().or_(-1), b.Shapes().Count().or_(-2));
  };
  for (int i = 1; i <= page.Shapes().Count().or_(0); ++i) {
    compare(page.Shapes().Item(i), there.Shapes().Item(i));
    for (int m = 1; m <= page.Shapes().Item(i).Shapes().Count().or_(0); ++m)
      compare(page.Shapes().Item(i).Shapes().Item(m), there.Shapes().Item(i).Shapes().Item(m));
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace quorvel
