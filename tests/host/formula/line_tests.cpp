// Runs the lines of tests/data/formulas: formulas, formats and cell names, each with what it must give.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "host/cells/cell_name.h"
#include "host/formula/value_format.h"
#include "test_context.h"

namespace quorvel::host {
namespace {

struct Line {
  std::string place;  ///< file and line number, for messages
  std::string given, expected;
};

std::filesystem::path dataFolder() { return std::filesystem::path(QUORVEL_SOURCE_FOLDER) / "tests/data/formulas"; }

/// Calls `run` for each "given => expected" line of a file and `define` for each "let name = formula".
template <class Run, class Define>
int forEachLine(const std::filesystem::path& path, Run run, Define define) {
  std::ifstream file(path);
  EXPECT_TRUE(file) << path;
  int count = 0, number = 0;
  for (std::string text; std::getline(file, text);) {
    ++number;
    if (text.empty() || text[0] == '#') continue;
    Line line;
    line.place = path.filename().string() + ":" + std::to_string(number);
    if (text.starts_with("let ")) {
      const auto equals = text.find(" = ");
      define(text.substr(4, equals - 4), text.substr(equals + 3));
      continue;
    }
    const auto arrow = text.rfind(" => ");
    if (arrow == std::string::npos) {
      ADD_FAILURE() << line.place << ": no expected text";
      continue;
    }
    line.given = text.substr(0, arrow);
    line.expected = text.substr(arrow + 4);
    run(line);
    ++count;
  }
  return count;
}

/// "~0.7071" allows any number that differs by less than a unit of its last digit.
bool meets(const std::string& actual, const std::string& expected) {
  if (!expected.starts_with("~")) return actual == expected;
  const auto point = expected.find('.');
  const auto end = expected.find_first_not_of("0123456789.-", 1);
  const std::size_t digits = end == std::string::npos ? expected.size() : end;
  const double tolerance = point == std::string::npos ? 1 : std::pow(10, -static_cast<double>(digits - point - 1));
  const double wanted = std::strtod(expected.c_str() + 1, nullptr);
  char* rest = nullptr;
  const double found = std::strtod(actual.c_str(), &rest);
  return std::fabs(found - wanted) < tolerance && std::string(rest) == expected.substr(digits);
}

std::string resultOf(const std::string& text, EvaluationContext& context) {
  const FormulaPtr formula = parseFormula(text);
  if (!formula) return "no formula";
  const Maybe<Value> value = evaluate(*formula, context);
  return value ? value->asText() : "nothing";
}

TEST(FormulaLines, EveryFormulaGivesItsText) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(dataFolder() / "values")) {
    TestContext context;
    count += forEachLine(
        entry.path(),
        [&](const Line& line) {
          const std::string actual = resultOf(line.given, context);
          EXPECT_TRUE(meets(actual, line.expected))
              << line.place << ": " << line.given << "\n  gives    " << actual << "\n  expected " << line.expected;
        },
        [&](const std::string& name, const std::string& formula) { context.set(name, formula); });
  }
  EXPECT_GT(count, 300);
}

TEST(FormulaLines, EveryFormatShowsItsText) {
  TestContext context;
  forEachLine(
      dataFolder() / "formats.txt",
      [&](const Line& line) {
        const auto bar = line.given.find(" | ");
        const FormulaPtr formula = parseFormula(line.given.substr(0, bar));
        ASSERT_TRUE(formula) << line.place;
        const std::string format = bar == std::string::npos ? "" : line.given.substr(bar + 3);
        const std::string actual = "[" + formatValue(evaluate(*formula, context).or_(Value()), format) + "]";
        EXPECT_EQ(actual, line.expected) << line.place << ": " << line.given;
      },
      [](const std::string&, const std::string&) {});
}

TEST(FormulaLines, EveryCellNameIsRead) {
  forEachLine(
      dataFolder() / "cell_names.txt",
      [](const Line& line) {
        const Maybe<CellKey> key = parseCellName(line.given);
        EXPECT_EQ(key ? cellName(*key) : "nothing", line.expected) << line.place << ": " << line.given;
        // What a name is written as is read as the same cell.
        if (key) {
          EXPECT_EQ(parseCellName(cellName(*key)), *key) << line.place;
        }
      },
      [](const std::string&, const std::string&) {});
}

}  // namespace
}  // namespace quorvel::host
