// Tasks that are grouped with other shapes and ungrouped again stay the same Tasks.
#include <cmath>
#include <filesystem>

#include "formats/formats.h"
#include "formats/store_text.h"
#include "host/connectors/connector_ends.h"
#include "host/store_dump.h"
#include "stories/details_fixture.h"

namespace quorvel {
namespace {

class GroupedTasks : public DetailsTest {
 protected:
  const host::Store& store() { return session.engine().store(); }
  host::DocumentId id() const { return host::DocumentId{map.ref().id}; }
  std::string dump() { return StoreDump::of(store(), id()); }
  host::Box boxOf(const Shape& shape) { return host::boxOnPage(store(), host::SheetId{shape.ref().id}); }
  host::Polyline lineOf(const Shape& link) { return host::lineOnPage(store(), host::SheetId{link.ref().id}); }
  bool meets(const Shape& link, bool begin, const Shape& shape) {
    const host::Polyline line = lineOf(link);
    const host::Box box = boxOf(shape);
    return box.grown(0.02, 0.02).holds(begin ? line.front() : line.back());
  }
  Shape group(const std::vector<Shape>& shapes) {
    const Window window = app.ActiveWindow();
    window.DeselectAll();
    for (const Shape& shape : shapes) window.Select(shape, visio::select);
    return window.Selection().Group();
  }
  std::string cellsOf(const Shape& shape) {
    std::string all;
    for (const char* cell : {"Prop.Task_ID", "Prop.Task_Description", "Prop.Responsible_Role", "Prop.Guidelines"})
      all += text(shape, cell) + "|";
    return shape.Name().or_("") + "|" + shape.Text().or_("") + "|" + all;
  }
};

TEST_F(GroupedTasks, KeepTheirIdNameDetailsAndLinks) {
  write("Prop.Responsible_Role", "Manager");
  write("Prop.Guidelines", "Ask first; Write down");
  const Shape next = dropTask(page, 8), link = drop(page, "Task Link", 5, 2), plain = page.DrawRectangle(1, 8, 2, 9);
  ASSERT_TRUE(link.Cells("BeginX").GlueTo(task.Cells("PinX"))) << lastRefusal();
  ASSERT_TRUE(link.Cells("EndX").GlueTo(next.Cells("PinX"))) << lastRefusal();
  const std::string start = dump(), cells = cellsOf(task);
  const host::Box place = boxOf(task);
  const host::Polyline line = lineOf(link);
  const std::size_t asked = lettersAsked.size();
  const std::vector<std::string> details = column();

  const Shape made = group({task, plain});
  ASSERT_TRUE(made) << lastRefusal();
  EXPECT_FALSE(made.CellExists("User.AlreadyAdded", 1) == true) << "it is not a Task";
  EXPECT_FALSE(made.CellExists("Prop.Task_ID", 0) == true);
  EXPECT_EQ(lettersAsked.size(), asked);
  EXPECT_EQ(cellsOf(task), cells);
  EXPECT_EQ(column(), details);
  EXPECT_EQ(task.Master().Name(), "Task");
  EXPECT_NEAR(boxOf(task).left, place.left, 1e-9);
  EXPECT_NEAR(boxOf(task).top, place.top, 1e-9);
  EXPECT_TRUE(lineOf(link) == line) << "nothing moved, so nothing is redrawn";
  EXPECT_EQ(page.Connects().Count(), 2);

  // The group moves with its members, and the link with the Task.
  ASSERT_TRUE(made.Cells("PinY").SetResult(visio::unitsInches, 11.0));
  EXPECT_NEAR(boxOf(task).left, place.left, 1e-9);
  EXPECT_GT(boxOf(task).bottom, place.top);
  EXPECT_TRUE(meets(link, true, task));
  EXPECT_TRUE(meets(link, false, next));
  // The Task's details are redrawn in the group as outside.
  write("Prop.Guidelines", "Sign");
  EXPECT_EQ(column(), (std::vector<std::string>{"controls1: Sign"}));
  write("Prop.Guidelines", "Ask first; Write down");
  EXPECT_EQ(column(), details);

  ASSERT_TRUE(made.Ungroup()) << lastRefusal();
  EXPECT_EQ(cellsOf(task), cells);
  EXPECT_EQ(column(), details);
  EXPECT_EQ(lettersAsked.size(), asked);
  EXPECT_TRUE(meets(link, true, task));
  EXPECT_EQ(page.Connects().Count(), 2);
  const std::string end = dump();
  for (int i = 0; i < 5; ++i) ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(start, dump()), "") << "each of it was one step";
  for (int i = 0; i < 5; ++i) ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(end, dump()), "");
}

TEST_F(GroupedTasks, ALinkInTheGroupStaysGluedToTheTaskOutside) {
  const Shape next = dropTask(page, 8), link = drop(page, "Task Link", 5, 2);
  ASSERT_TRUE(link.Cells("BeginX").GlueTo(task.Cells("Connections.X2"))) << lastRefusal();
  ASSERT_TRUE(link.Cells("EndX").GlueTo(next.Cells("Connections.X1"))) << lastRefusal();
  const Shape made = group({task, link});
  ASSERT_TRUE(made);
  const std::string before = dump();
  for (const double y : {3.0, 9.0}) {
    ASSERT_TRUE(made.Cells("PinY").SetResult(visio::unitsInches, y));
    const host::Polyline drawn = lineOf(link);
    EXPECT_EQ(drawn.size(), 4u) << "right-angled";
    EXPECT_NEAR(drawn.front().x, boxOf(task).right, 1e-6);
    EXPECT_NEAR(drawn.front().y, boxOf(task).middle().y, 1e-6);
    EXPECT_NEAR(drawn.back().x, boxOf(next).left, 1e-6);
    EXPECT_NEAR(drawn.back().y, boxOf(next).middle().y, 1e-6);
  }
  ASSERT_TRUE(app.Undo());
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
}

TEST_F(GroupedTasks, AreReadFromFilesInTheirGroups) {
  const Shape next = dropTask(page, 8), link = drop(page, "Task Link", 5, 2), label = page.DrawRectangle(1, 8, 2, 9);
  ASSERT_TRUE(link.Cells("BeginX").GlueTo(task.Cells("PinX"))) << lastRefusal();
  ASSERT_TRUE(link.Cells("EndX").GlueTo(next.Cells("PinX"))) << lastRefusal();
  const Shape inner = group({task, link}), outer = group({inner, next, label});
  ASSERT_TRUE(outer.Cells("Angle").SetFormula("30 deg"));
  // A group around members of a Task, and members that no Task holds any more.
  for (const int member : {1, 2}) next.Shapes().Item(member).Cells("LockSelect").FormulaForce("0");
  ASSERT_TRUE(group({next.Shapes().Item(1), next.Shapes().Item(2)})) << lastRefusal();
  ASSERT_TRUE(dropTask(page, 5, 9).Ungroup()) << lastRefusal();
  for (const char* ending : {".vsdx", ".vdx"}) {
    const std::string file = testing::TempDir() + "quorvel-grouped-tasks" + ending;
    const host::DocumentFormat& format = *formats::formatFor(file);
    ASSERT_EQ(format.save(store(), id(), file), "");
    host::Store other;
    const host::OpenResult opened = format.open(other, file);
    ASSERT_TRUE(opened.document) << opened.error;
    const std::vector<std::string> before = formats::testing::StoreText(store(), true).of(id());
    const std::vector<std::string> after = formats::testing::StoreText(other, true).of(opened.document);
    ASSERT_EQ(before.size(), after.size()) << ending;
    for (std::size_t i = 0; i < before.size(); ++i) ASSERT_EQ(before[i], after[i]) << ending;
    std::filesystem::remove(file);
  }
}

}  // namespace
}  // namespace quorvel
