// Who may include whom: src against the levels of its own page.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "levels/include_rules.h"

namespace quorvel::levels {
namespace {

namespace fs = std::filesystem;

const fs::path sourceFolder = fs::path(QUORVEL_SOURCE_FOLDER) / "src";

std::string contentsOf(const fs::path& file) {
  std::ifstream in(file);
  return {std::istreambuf_iterator<char>(in), {}};
}

Rules ourRules() { return rulesIn(contentsOf(sourceFolder / "README.md")); }

TEST(Levels, HoldForEveryInclude) {
  Sources sources;
  for (const auto& entry : fs::recursive_directory_iterator(sourceFolder)) {
    const std::string kind = entry.path().extension().string();
    if (kind == ".h" || kind == ".cpp" || kind == ".def")
      sources[fs::relative(entry.path(), sourceFolder).generic_string()] = contentsOf(entry.path());
  }
  ASSERT_GT(sources.size(), 100u);
  for (const std::string& offence : offences(ourRules(), sources)) ADD_FAILURE() << offence;
}

TEST(Levels, AreNoticedWhenBroken) {
  struct Case {
    const char* what;
    Sources sources;
    std::size_t offences;
  };
  for (const Case& each : std::initializer_list<Case>{
           {"downward", {{"shapes/a.cpp", "#include \"model/host_model.h\"\n#include <vector>\n"}}, 0},
           {"the add-in knows no host", {{"shapes/a.cpp", "#include \"host/sheet/store.h\"\n"}}, 1},
           {"the engine knows no add-in", {{"host/text/a.h", "  #include \"shapes/a.h\"\n"}}, 1},
           {"upward in the engine", {{"host/cells/a.h", "#include \"host/engine/engine.h\"\n"}}, 1},
           {"a library out of place", {{"host/cells/a.cpp", "#include <pugixml.hpp>\n"}}, 1},
           {"a library in its place", {{"formats/package/a.cpp", "#include <zip.h>\n"}}, 0},
           {"an unknown folder", {{"extras/a.cpp", ""}}, 1},
           {"a circle of rooms",
            {{"shapes/a.h", "#include \"dialogs/b.h\"\n"},
             {"dialogs/b.cpp", "#include \"dialogs/b.h\"\n#include \"shapes/c.h\"\n"},
             {"shapes/c.cpp", "#include \"shapes/a.h\"\n"}},
            1},
           {"rooms in order",
            {{"shapes/a.cpp", "#include \"shapes/a.h\"\n#include \"dialogs/b.h\"\n"},
             {"dialogs/b.h", "#include \"shapes/c.h\"\n"}},
            0},
       }) {
    EXPECT_EQ(offences(ourRules(), each.sources).size(), each.offences) << each.what;
  }
}

}  // namespace
}  // namespace quorvel::levels
