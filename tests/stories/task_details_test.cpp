// What a Task shows around itself: drawn from its cells, drawn anew at each change, and gone without leftovers.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class TaskDetails : public MapTest {
 protected:
  Page page;
  Shape task;
  void SetUp() override {
    MapTest::SetUp();
    page = newMap("AB Order entry");
    task = dropTask(page);
    ASSERT_TRUE(task) << lastRefusal();
  }

  void write(const std::string& cell, const std::string& value) { write(task, cell, value); }
  void write(const Shape& shape, const std::string& cell, const std::string& value) {
    EXPECT_TRUE(shape.Cells(cell).SetFormula("\"" + value + "\"")) << cell << ": " << lastRefusal();
  }

  /// Detail shapes from the top down, each as its row and its text; icons as "icon", those with a link as "link icon".
  std::vector<std::string> column() const { return columnOf(task); }
  static std::vector<std::string> columnOf(const Shape& task) {
    std::multimap<double, std::string> byHeight;
    for (const Shape& member : task.Shapes().all()) {
      const std::string row = member.Data3().or_({});
      if (member.Data1() != "Pline" || row.empty() || row.starts_with("Pic") || row == "Responsible_Role") continue;
      byHeight.emplace(-number(member, "PinY"), row + ": " + member.Text().or_("(none)"));
    }
    std::vector<std::string> rows;
    for (const auto& [height, text] : byHeight) rows.push_back(text);
    return rows;
  }
  Shape line(const std::string& row) const {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data3() == row) return member;
    }
    return {};
  }
  Shape tagged(const std::string& tag) const {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data2() == tag) return member;
    }
    return {};
  }
  int countTagged(const std::string& tag) const {
    int count = 0;
    for (const Shape& member : task.Shapes().all()) count += member.Data2() == tag;
    return count;
  }
  static void addLink(const Shape& shape, const std::string& address, const std::string& description) {
    const Hyperlink link = shape.AddHyperlink();
    EXPECT_TRUE(link.SetDescription(description));
    EXPECT_TRUE(link.SetAddress(address));
  }
  static std::string linksOf(const Shape& shape) {
    std::string links;
    for (const Hyperlink& link : shape.Hyperlinks().all())
      links += link.Description().or_("?") + "=" + link.Address().or_("?") + " ";
    return links;
  }
};

TEST_F(TaskDetails, AppearWhereTheyBelong) {
  write("Prop.Responsible_Role", "Clerk");
  write("Prop.Guidelines", "Ask first; Write down ;Sign");
  write("Prop.Resources", "Order form");
  write("Prop.SupportingRole_2", "Manager");
  EXPECT_EQ(column(), (std::vector<std::string>{"controls1: Ask first", "controls2: Write down", "controls3: Sign",
                                                "Resources1: Order form", "SupportingRole_2: Manager"}));
  const char* rows[] = {"controls1", "controls2", "controls3", "Resources1", "SupportingRole_2"};
  double y = -0.48;
  for (const char* row : rows) {
    EXPECT_NEAR(number(line(row), "PinY"), y, 1e-9) << row;
    EXPECT_NEAR(number(line(std::string("Pic") + row), "PinY"), y, 1e-9) << row;
    y -= 0.2;
  }
  EXPECT_NEAR(number(tagged("Vertical"), "EndY"), -1.18, 1e-9);
  const Shape role = tagged("Responsible_Role");
  EXPECT_EQ(role.Text(), "Clerk");
  EXPECT_EQ(number(role, "PinY"), number(task, "Height"));
  EXPECT_EQ(number(role, "Width"), number(task, "Width"));
}

}  // namespace
}  // namespace quorvel
