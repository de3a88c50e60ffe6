// A map of the oldest version is opened while the host refuses one call of the add-in's, each in turn: no link and no
// time is lost.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "base/text.h"
#include "failure/story_sweep.h"
#include "stories/old_maps.h"

namespace quorvel {
namespace {

/// What must survive: the links of each shape and of its members, and the numbers of the times.
std::vector<std::string> dataOf(const Document& map) {
  std::vector<std::string> all;
  const auto addLinks = [&](const Shape& shape) {
    for (const Hyperlink& link : shape.Hyperlinks().all()) all.push_back(link.Description().or_("?"));
  };
  for (const Page& page : map.Pages().all()) {
    for (const Shape& shape : page.Shapes().all()) {
      addLinks(shape);
      for (const Shape& member : shape.Shapes().all()) addLinks(member);
      for (const char* cell : {"Prop.Task_Completion_Time", "Prop.Time_Between_Tasks"}) {
        if (shape.CellExists(cell, 0) == true)
          all.push_back(shortestNumber(val(shape.Cells(cell).ResultStr(0).or_("?"))));
      }
    }
  }
  std::ranges::sort(all);
  return all;
}

TEST(RefusedUpgrade, OpeningAMapOfTheOldestVersion) {
  const std::string folder = testing::TempDir() + "quorvel-refused-upgrade-" + std::to_string(getpid()) + "/";
  const OldMaps maps(folder);
  const std::string file = maps.make("1.2");
  std::vector<std::string> before;
  maps.change(file, [&](const Document& map) { before = dataOf(map); });
  EXPECT_GT(before.size(), 10u);
  const auto open = [&](StorySweep::Stage& stage) {
    const Document opened = stage.user.Documents().Open(file);
    ASSERT_TRUE(opened);
    EXPECT_EQ(dataOf(opened), before);
    EXPECT_TRUE(opened.Close());
  };
  StorySweep([](StorySweep::Stage&) {}, open, [](Form&) {}).refuseEach(1, StorySweep::toTheEnd, 97, 1000);
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace quorvel
