// The services of a session that read files of other programs.
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

using SessionServices = MapTest;

TEST_F(SessionServices, NameTheBookmarksOfADocument) {
  Platform& platform = session.platform();
  const std::string folder = QUORVEL_SOURCE_FOLDER "/tests/data/word/";
  EXPECT_EQ(platform.bookmarksOf(folder + "bookmarks.doc").or_({}).size(), 8u);
  EXPECT_TRUE(platform.bookmarksOf(folder + "no_bookmarks.doc").has());
  EXPECT_FALSE(platform.bookmarksOf(folder + "README.md").has());
}

}  // namespace
}  // namespace quorvel
