// A page with one Task, and helpers that read what the Task shows around itself.
#pragma once

#include <map>

#include "stories/map_fixture.h"

namespace quorvel {

class DetailsTest : public MapTest {
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
    EXPECT_TRUE(shape.Cells(cell).SetFormula(quoted(value))) << cell << ": " << lastRefusal();
  }
  static std::string quoted(const std::string& value) { return "\"" + value + "\""; }

  /// The first member with this Data2 or this Data3; null when there is none.
  static Shape tagged(const Shape& task, const std::string& tag) {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data2() == tag) return member;
    }
    return {};
  }
  static Shape line(const Shape& task, const std::string& row) {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data3() == row) return member;
    }
    return {};
  }
  Shape tagged(const std::string& tag) const { return tagged(task, tag); }
  Shape line(const std::string& row) const { return line(task, row); }
  static std::string textOf(const Shape& shape) { return shape.Text().or_("(none)"); }

  /// The lower lines from the top down, each as its row and its text.
  std::vector<std::string> column() const { return column(task); }
  static std::vector<std::string> column(const Shape& task) {
    std::multimap<double, std::string> byDepth;
    for (const Shape& member : task.Shapes().all()) {
      const std::string row = member.Data3().or_({});
      if (member.Data1() != "Pline" || row.empty() || row.starts_with("Pic") || row == "Responsible_Role") continue;
      byDepth.emplace(-number(member, "PinY"), row + ": " + textOf(member));
    }
    std::vector<std::string> rows;
    for (const auto& [depth, text] : byDepth) rows.push_back(text);
    return rows;
  }

  static void addLink(const Shape& shape, const std::string& address, const std::string& description) {
    const Hyperlink link = shape.AddHyperlink();
    EXPECT_TRUE(link.SetDescription(description));
    EXPECT_TRUE(link.SetAddress(address));
  }
  static std::string links(const Shape& shape) {
    std::string text;
    for (const Hyperlink& link : shape.Hyperlinks().all()) {
      text += (text.empty() ? "" : " ") + link.Description().or_("?") + "=" + link.Address().or_("?");
    }
    return text;
  }
  /// The names of a shape's layers.
  static std::string layers(const Shape& shape) {
    std::string names;
    for (int i = 1; i <= shape.LayerCount().or_(0); ++i) names += shape.Layer(i).Name().or_("?");
    return names;
  }
};

}  // namespace quorvel
