// Checks the includes of src against the list in src/README.md.
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

/// A unit of that folder which includes the header.
Sources including(const std::string& unit, const std::string& header) {
  return {{unit, "  #include \"" + header + "\"\n#include <vector>\n"}};
}

TEST(Levels, HoldForEveryInclude) {
  Sources sources;
  for (const auto& entry : fs::recursive_directory_iterator(sourceFolder)) {
    const std::string kind = entry.path().extension().string();
    if (kind == ".h" || kind == ".cpp" || kind == ".def")
      sources[fs::relative(entry.path(), sourceFolder).generic_string()] = contentsOf(entry.path());
  }
  ASSERT_GT(sources.size(), 100u);
  for (const std::string& violation : violations(ourRules(), sources)) ADD_FAILURE() << violation;
}

TEST(Levels, EachWrongIncludeIsReported) {
  struct Case {
    const char* what;
    Sources sources;
    std::size_t violations;
  };
  for (const Case& each : std::initializer_list<Case>{
           {"above in the list", including("shapes/a.cpp", "model/host_model.h"), 0},
           {"below in the list", including("host/cells/a.h", "host/engine/engine.h"), 1},
           {"lists that open a dialog", including("vocab/a.cpp", "dialogs/b.h"), 1},
           {"the add-in does not see the engine", including("shapes/a.cpp", "host/sheet/store.h"), 1},
           {"the engine does not see the add-in", including("report/a.h", "data/a.h"), 1},
           {"the application sees both", including("session/a.h", "shapes/a.h"), 0},
           {"a library out of place", {{"host/cells/a.cpp", "#include <pugixml.hpp>\n"}}, 1},
           {"a library in its place", {{"formats/package/a.cpp", "#include <zip.h>\n"}}, 0},
           {"a folder that is not listed", {{"extras/a.cpp", ""}}, 1},
           {"a cycle of units",
            {{"shapes/a.h", "#include \"shapes/b.h\"\n"},
             {"shapes/b.cpp", "#include \"shapes/b.h\"\n#include \"shapes/c.h\"\n"},
             {"shapes/c.cpp", "#include \"shapes/a.h\"\n"}},
            1},
           {"units in order",
            {{"shapes/a.cpp", "#include \"shapes/a.h\"\n#include \"shapes/b.h\"\n"},
             {"shapes/b.h", "#include \"shapes/c.h\"\n"}},
            0},
       }) {
    EXPECT_EQ(violations(ourRules(), each.sources).size(), each.violations) << each.what;
  }
}

}  // namespace
}  // namespace quorvel::levels
