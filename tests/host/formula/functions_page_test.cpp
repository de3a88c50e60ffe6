// The page docs/functions.md lists the functions that formulas have.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "host/formula/functions.h"

namespace quorvel::host {

TEST(FunctionsPage, ListsAllFunctionsByTopic) {
  std::ifstream file(QUORVEL_SOURCE_FOLDER "/docs/functions.md");
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  const std::pair<std::string, std::span<const FunctionRow>> topics[] = {
      {"arithmetic", arithmeticFunctions()}, {"logic", logicFunctions()},       {"text", textFunctions()},
      {"date_time", dateTimeFunctions()},    {"geometry", geometryFunctions()}, {"colour", colourFunctions()},
      {"reference", referenceFunctions()},   {"host", hostFunctions()},         {"path", pathFunctions()},
      {"relation", relationFunctions()},
  };
  std::size_t listed = 0;
  for (const auto& [topic, functions] : topics) {
    std::vector<std::string> names;
    for (const FunctionRow& row : functions) names.emplace_back(row.name);
    std::ranges::sort(names);
    std::string line = "| " + topic + " |";
    for (const std::string& name : names) line += " " + name;
    line += " |\n";
    EXPECT_NE(page.find(line), std::string::npos) << "docs/functions.md needs this row:\n" << line;
    listed += functions.size();
  }
  EXPECT_EQ(listed, allFunctions().size()) << "a topic is missing here";
}

}  // namespace quorvel::host
