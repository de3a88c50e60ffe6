// Maps of earlier versions are brought up to date when they are opened.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "formats/normal_form.h"
#include "host/store_dump.h"
#include "stories/map_comparison.h"
#include "stories/map_fixture.h"
#include "stories/old_maps.h"

namespace quorvel {
namespace {

class Upgrade : public MapTest {
 protected:
  const std::string folder = testing::TempDir() + "quorvel-upgrade-" + std::to_string(getpid()) + "/";
  const OldMaps maps{folder};
  void TearDown() override {
    MapTest::TearDown();
    std::filesystem::remove_all(folder);
  }

  Document open(const std::string& file) {
    const Document opened = app.Documents().Open(file);
    EXPECT_TRUE(opened) << file << ": " << lastRefusal();
    return opened;
  }
  std::vector<std::string> differences(const Document& a, const Document& b) {
    return MapComparison::differences(session.host(), a, b);
  }
  /// Without the document's own cells: the one with the list separator is added again each time.
  static std::string normalForm(const std::string& file) {
    std::string text = formats::normalForm(file).or_("(no drawing)");
    const std::size_t start = text.find("part /visio/document.xml");
    EXPECT_NE(start, std::string::npos);
    return text.erase(start, text.find("\npart ", start) - start);
  }
};

/// What stays different between a converted map and a new one.
bool isExpected(const std::string& difference, double version) {
  struct Expected {
    double from, before;  ///< versions
    const char* pattern;
  };
  static const Expected all[] = {
      // Only converted Tasks have these rows.
      {0, 2.03, "/Prop\\.(Guideline|Resource)_[1-5](\\.Invisible)?: .* \\| missing$"},
      // The mark of notes lies a little lower.
      {0, 2.03, "/pic_indicatesNotes  /Pin[XY]: "},
      // The same value, written in another way.
      {0, 2.03, "/Prop\\.SupportingRole_[34]\\.Invisible: False : FALSE \\| 0 : 0$"},
      // A row that is added has the cells that matter; a Task Link's has no place among the others.
      {0, 2.0,
       "/Prop\\.Time_Units\\.(Calendar|Invisible|LangID|SortKey|Verify): missing \\| (0 : 0|\"en-US\" : en-US|\"32\" : "
       "32)$"},
      // The mark of a converted page or link.
      {0, 2.16, "/User\\.TimegreaterThanzero: 2 : 2 \\| 0 : 0$"},
      // Background pages get these rows too.
      {0, 2.03,
       "^Frame/User\\.(PAGE_NAME|Supporting_Role[34]|TaskLink_txt_Visible|TimegreaterThanzero): .* \\| missing$"},
      // A new Task or link without a time gets the formula with its first one.
      {0, 2.16,
       "/(Prop\\.(Task_Completion_Time|Time_Between_Tasks)|User\\.TimeValue|Fields\\.Value\\[1\\]): .* : 0 em\\. "
       "\\| .* : 0 e[md]\\.$"},
      // A new connector without a target gets these with its first one.
      {0, 2.16, "/User\\.StoredTaskID: \"Z99\" : Z99 \\| missing$"},
      {0, 2.16, "/Char\\.Size\\[1\\]: guard\\(12 pt\\) : 12 pt\\. \\| 12\\.0"},
      // The lines of the oldest maps have their links also as a text in the Task, and an arrow.
      {0, 1.3,
       "/(Prop\\.(controls1|Resources1)\\.Label|User\\.(Responsible_Role|SupportingRole_1)_Hyper): \";.* \\| \"\" : $"},
      {0, 1.3, "/Pline .*/EndArrow: 10 : 10 \\| 0 : 0$"},
      // The template's rows have a prompt.
      {0, 2.0, "^document/User\\.visPropRpt[0-9]+\\.Prompt: missing \\| \"\" : $"},
  };
  return std::ranges::any_of(all, [&](const Expected& each) {
    return version >= each.from && version < each.before && std::regex_search(difference, std::regex(each.pattern));
  });
}

TEST_F(Upgrade, EachVersionOpensToTheCellsOfCurrentMaps) {
  for (const std::string version : OldMaps::versions) {
    const std::string current = maps.makeCurrent(version);
    for (const std::string ending : {".vsdx", ".vdx"}) {
      SCOPED_TRACE(version + ending);
      const Document upgraded = open(maps.make(version, current, ending));
      EXPECT_EQ(upgraded.Saved(), true);
      EXPECT_FALSE(app.Undo());
      EXPECT_EQ(text(upgraded.DocumentSheet(), "User.Quorvel_dll_Version"), "2.16");
      const Document expected = open(current);
      for (const std::string& each : differences(upgraded, expected)) {
        if (!isExpected(each, val(version))) ADD_FAILURE() << each;
      }

      // Once saved it is not converted again.
      const std::string first = folder + "first" + ending, second = folder + "second" + ending;
      ASSERT_TRUE(upgraded.SaveAs(first)) << lastRefusal();
      std::filesystem::copy_file(first, second);
      const Document again = open(second);
      EXPECT_EQ(differences(upgraded, again), std::vector<std::string>());
      ASSERT_TRUE(again.Close() && upgraded.Close() && expected.Close());
      std::filesystem::remove(second);
    }
  }
}

TEST_F(Upgrade, ACurrentMapIsNotTouched) {
  const std::string file = maps.makeCurrent("2.16");
  struct Changes : ApplicationEvents {
    void CellChanged(Cell cell) override {
      // Menu entries show and hide with the add-in.
      const std::string name = cell.Name().or_("?");
      if (cell.Shape().ContainingPage() && !name.ends_with(".Menu")) names.push_back(name);
    }
    void ShapeAdded(Shape) override { names.push_back("a shape"); }
    std::vector<std::string> names;
  } changes;
  session.host().advise(changes);
  map = open(file);
  session.host().unadvise(changes);
  EXPECT_EQ(changes.names, std::vector<std::string>());
  EXPECT_EQ(map.Saved(), true);
  EXPECT_TRUE(session.addin().toolbar.Visible() == true);
  ASSERT_TRUE(map.SaveAs(folder + "again.vsdx")) << lastRefusal();
  EXPECT_EQ(formats::firstDifference(normalForm(file), normalForm(folder + "again.vsdx")), "");
}

TEST_F(Upgrade, TheDocumentOfTheEventIsConverted) {
  const std::string oldest = maps.make("1.2"), later = maps.make("2.02"), last = maps.make("2.1");
  ASSERT_TRUE(newMap("Active"));
  const std::string before = StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id});
  constexpr int readOnlyAndHidden = 2 + 64;
  const Document hidden = app.Documents().OpenEx(oldest, readOnlyAndHidden);
  ASSERT_TRUE(hidden) << lastRefusal();
  EXPECT_TRUE(app.ActiveDocument() == map);
  EXPECT_EQ(StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id}), before);
  const Document second = open(later), third = open(last);
  const struct {
    Document document;
    double version;
    std::string current;
  } all[] = {{hidden, 1.2, "current 1.2.vsdx"}, {second, 2.02, "current 2.02.vsdx"}, {third, 2.1, "current 2.1.vsdx"}};
  for (const auto& one : all) {
    EXPECT_EQ(one.document.Saved(), true);
    for (const std::string& each : differences(one.document, open(folder + one.current)))
      if (!isExpected(each, one.version)) ADD_FAILURE() << one.version << " " << each;
  }
}

TEST_F(Upgrade, TimesThatAreUnusualAreKept) {
  const std::string file = maps.make("2.0");
  std::vector<Shape> tasks;
  const auto tasksOf = [](const Document& document) {
    std::vector<Shape> found;
    for (const Shape& shape : document.Pages().Item(1).Shapes().all())
      if (shape.Master().Name() == "Task") found.push_back(shape);
    return found;
  };
  const struct {
    const char *unit, *old, *shown, *stored;
  } cases[] = {{"Hours", "\"about 3\"", "about 3", nullptr},  // a text is no number
               {"Shifts", "2", "2 ew.", "2ew"},               // what the cell's formula makes of other units
               {"Days", "0.123456789", "0.12346 ed.", "0.123456789ed"},
               {"Hours", "\"\"", "0 eh.", "\"0 em.\""},
               {"Minutes", "90", "90 em.", "90em"}};
  maps.change(file, [&](const Document& old) {
    const std::vector<Shape> all = tasksOf(old);
    ASSERT_EQ(all.size(), std::size(cases));
    for (std::size_t i = 0; i < all.size(); ++i) {
      all[i].Cells("Prop.Time_Units").FormulaForce("\"" + std::string(cases[i].unit) + "\"");
      all[i].Cells("Prop.Task_Completion_Time").FormulaForce(std::string(cases[i].old));
    }
  });
  map = open(file);
  const std::vector<Shape> all = tasksOf(map);
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(cases[i].old);
    EXPECT_EQ(text(all[i], "Prop.Task_Completion_Time"), cases[i].shown);
    EXPECT_EQ(all[i].CellExists("User.TimeValue", 0), cases[i].stored != nullptr);
    if (cases[i].stored) {
      EXPECT_EQ(all[i].Cells("User.TimeValue").Formula(), cases[i].stored);
    }
  }
}

TEST_F(Upgrade, ReportDefinitionsAreAddedAsTexts) {
  const std::string install = folder + "install";
  std::filesystem::create_directories(install + "/Reports");
  for (const auto& each : std::filesystem::directory_iterator(session.installFolder())) {
    if (each.path().filename() != "Reports")
      std::filesystem::create_symlink(each.path(), install + "/" + each.path().filename().string());
  }
  const auto write = [&](const char* name, const std::string& bytes) {
    std::ofstream(install + "/Reports/" + name, std::ios::binary) << bytes;
  };
  std::string wide = "\xFF\xFE";
  for (const char c : std::string("<?xml version=\"1.0\" encoding=\"UTF-16\"?><report title=\"\xE9\"/>"))
    (wide += c) += '\0';
  const std::string notes = "<!-- all of it -->\n<report> <a b='\"1\"'>&lt;</a>\n</report>\n";
  write("1 wide.xml", wide);
  write("2 broken.xml", "<report>");
  write("3 entity.xml", "<!DOCTYPE r [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><r>&e;</r>");
  write("4 large.xml", "<a>" + std::string(1 << 20, ' ') + "</a>");
  write("5 kept.xml", "<new/>");
  write("6 notes.xml", notes);

  const std::string file = maps.make("1.9");
  maps.change(file, [&](const Document& old) {
    old.DocumentSheet().AddNamedRow(visio::sectionUser, "visPropRpt5", 0);
    old.DocumentSheet().Cells("User.visPropRpt5").FormulaForce(std::string("\"<old/>\""));
  });
  SessionOptions other = options();
  other.installFolder = install;
  Session installed(other);
  const Shape sheet = installed.app().Documents().Open(file).DocumentSheet();
  const Maybe<std::string> expected[] = {"<report title=\"\xC3\xA9\"/>", {}, {}, {}, "<old/>", notes};
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    const std::string row = "User.visPropRpt" + std::to_string(i + 1);
    ASSERT_EQ(sheet.CellExists(row, 0), expected[i].has()) << row;
    if (expected[i]) {
      EXPECT_EQ(text(sheet, row), *expected[i]);
    }
  }
}

}  // namespace
}  // namespace quorvel
