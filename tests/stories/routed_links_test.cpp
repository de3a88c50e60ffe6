// Task Links on a map: they go around Tasks that are between, are redrawn after moves, and are read from a file as
// drawn.
#include <cmath>

#include "host/connectors/connector_ends.h"
#include "map_fixture.h"

namespace quorvel {
namespace {

class RoutedLinks : public MapTest {
 protected:
  const host::Store& store() { return session.engine().store(); }
  static host::SheetId sheetOf(const Shape& shape) { return host::SheetId{shape.ref().id}; }
  host::Polyline lineOf(const Shape& link) { return host::lineOnPage(store(), sheetOf(link)); }
  bool runsThrough(const Shape& link, const Shape& shape) {
    return host::crosses(lineOf(link), host::boxOnPage(store(), sheetOf(shape)));
  }
  static bool isSame(const host::Polyline& a, const host::Polyline& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (std::fabs(a[i].x - b[i].x) > 1e-9 || std::fabs(a[i].y - b[i].y) > 1e-9) return false;
    }
    return true;
  }
};

TEST_F(RoutedLinks, GoAroundTasksAndAreReadAsDrawn) {
  const Page page = newMap("AB Order entry");
  const Shape from = dropTask(page, 2), to = dropTask(page, 9), link = drop(page, "Task Link", 5, 2);
  ASSERT_TRUE(link.Cells("BeginX").GlueTo(from.Cells("PinX"))) << lastRefusal();
  ASSERT_TRUE(link.Cells("EndX").GlueTo(to.Cells("PinX"))) << lastRefusal();
  const host::Polyline straight = lineOf(link);
  EXPECT_EQ(straight.size(), 2u);

  const Shape between = dropTask(page, 5.5);
  const host::Polyline around = lineOf(link);
  EXPECT_FALSE(runsThrough(link, between));
  EXPECT_FALSE(runsThrough(link, from));
  EXPECT_FALSE(runsThrough(link, to));
  ASSERT_TRUE(app.Undo());
  EXPECT_TRUE(isSame(lineOf(link), straight)) << "the drop and what it moved are one step";
  ASSERT_TRUE(app.Redo());
  EXPECT_TRUE(isSame(lineOf(link), around));

  const std::string file = testing::TempDir() + "routed.vsdx";
  ASSERT_TRUE(map.SaveAs(file)) << lastRefusal();
  ASSERT_TRUE(map.Close());
  const Document reopened = app.Documents().Open(file);
  ASSERT_TRUE(reopened) << lastRefusal();
  const Page again = reopened.Pages().Item(1);
  Shape theLink, theTask;
  for (const Shape& shape : again.Shapes().all()) {
    if (shape.Master().Name().or_("").starts_with("Task Link"))
      theLink = shape;
    else if (shape.Master().Name().or_("").starts_with("Task"))
      theTask = shape;  // the last: the one between
  }
  ASSERT_TRUE(theLink);
  EXPECT_TRUE(isSame(lineOf(theLink), around)) << "opening redraws nothing";
  EXPECT_EQ(again.Connects().Count(), 2);
  ASSERT_TRUE(theTask.Cells("PinY").SetResult(visio::unitsInches, 1.5));
  EXPECT_TRUE(isSame(lineOf(theLink), straight)) << "the direct line is free again";
}

}  // namespace
}  // namespace quorvel
