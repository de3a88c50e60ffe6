// A map that was made with an earlier stencil opens and works.
#include <gtest/gtest.h>
#include <unistd.h>

#include "shapes/roles_in_use.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class OlderMap : public MapTest {
 protected:
  static Shape named(const Page& page, const char* name) { return page.Shapes().Item(std::string_view(name)); }
  static std::string links(const Shape& task, const std::string& row) {
    std::string text;
    for (const Shape& member : task.Shapes().all()) {
      if (!(member.Data3() == row)) continue;
      for (const Hyperlink& link : member.Hyperlinks().all()) text += link.Address().or_("?");
    }
    return text;
  }
};

TEST_F(OlderMap, OpensAndWorks) {
  map = app.Documents().Open(QUORVEL_SOURCE_FOLDER "/tests/data/maps/two_tasks.vsdx");
  ASSERT_TRUE(map) << lastRefusal();
  const Page page = map.Pages().Item(1);
  const Shape first = named(page, "AB01"), second = named(page, "AB02");
  ASSERT_TRUE(first && second);
  EXPECT_EQ(text(second, "Prop.Frequency_Partial"), "0");
  Shape link;
  for (const Shape& shape : page.Shapes().all()) {
    if (shape.OneD() == true) link = shape;
  }

  // Its Tasks keep the height that they have, whatever their text.
  const double height = number(first, "Height");
  ASSERT_TRUE(first.Cells("Prop.Task_Description").FormulaForce("\"" + std::string(300, 'm') + "\""));
  EXPECT_EQ(number(first, "Height"), height);
  EXPECT_GT(number(first.Shapes().Item(4), "Height"), 0.5);

  // Details, roles, links and numbers work as on a new map.
  ASSERT_TRUE(first.Cells("Prop.Guidelines").FormulaForce("\"Write down;Sign;Ask first\""));
  EXPECT_EQ(links(first, "controls1"), "controls2.doc");
  EXPECT_EQ(links(first, "controls2"), "");
  addin::UpdateOldRoleNames(session.addin(), map, "Manager", "Head");
  EXPECT_EQ(text(first, "Prop.SupportingRole_1"), "Head");
  EXPECT_EQ(links(first, "SupportingRole_1"), "SupportingRole_1.doc");
  const double end = number(link, "EndX");
  ASSERT_TRUE(second.Cells("PinX").SetResult(visio::unitsInches, 8.0));
  EXPECT_NEAR(number(link, "EndX"), end + 1, 1e-9);

  const Shape third = dropTask(page, 5, 3);
  ASSERT_TRUE(third) << lastRefusal();
  EXPECT_EQ(text(third, "Prop.Task_ID"), "AB03");
  EXPECT_TRUE(lettersAsked.empty());
  EXPECT_EQ(number(third, "Height"), height) << "the map's own master";
  EXPECT_EQ(third.Shapes().Item(4).Text(), "Task Description");

  const std::string file = testing::TempDir() + "quorvel-older-" + std::to_string(getpid()) + ".vsdx";
  ASSERT_TRUE(map.SaveAs(file)) << lastRefusal();
  ASSERT_TRUE(map.Close());
  map = app.Documents().Open(file);
  ASSERT_TRUE(map) << lastRefusal();
  EXPECT_EQ(links(named(map.Pages().Item(1), "AB01"), "controls1"), "controls2.doc");
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace quorvel
