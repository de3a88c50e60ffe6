// How texts and numbers of a table are written, and the order of its rows.
#include <gtest/gtest.h>

#include <algorithm>

#include "report/output/csv.h"
#include "report/output/html.h"
#include "report/table/natural_order.h"
#include "report/table/totals.h"

namespace quorvel::report {
namespace {

Table tableOf(std::vector<TableCell> cells) {
  Table table;
  table.title = "<T> & \"more\"";
  for (std::size_t i = 0; i < cells.size(); ++i) table.columns.emplace_back().title = "C" + std::to_string(i);
  table.rows.emplace_back().cells = std::move(cells);
  table.dataRows = 1;
  return table;
}

TEST(Csv, QuotesAndGuardsEachText) {
  const struct {
    const char *text, *written;
  } cases[] = {{"plain", "plain"},
               {"a,b", "\"a,b\""},
               {"a;b", "\"a;b\""},
               {"two\nlines", "\"two\nlines\""},
               {"a \"word\"", "\"a \"\"word\"\"\""},
               {"=1+1", "\"'=1+1\""},
               {"+49 30", "\"'+49 30\""},
               {"-5", "-5"},
               {"-2.50", "-2.50"},
               {"-", "\"'-\""},
               {"-5+cmd", "\"'-5+cmd\""},
               {"-inf", "\"'-inf\""},
               {"@SUM(A1)", "\"'@SUM(A1)\""},
               {"\t=1", "\"'\t=1\""},
               {" =1", "\"' =1\""},
               {"\"=1", "\"'\"\"=1\""},
               {"＝1+1", "\"'＝1+1\""},
               {"a=1", "a=1"},
               {"", ""}};
  for (const auto& each : cases)
    EXPECT_EQ(csvOf(tableOf({{each.text, {}}, {"x", {}}})),
              std::string("\xEF\xBB\xBF") + "C0,C1\r\n" + each.written + ",x\r\n");
}

TEST(Html, ShowsTextsAsTheyAre) {
  Table table = tableOf({{"<script>alert(1)</script> & \"a\"", {}}, {"2.5", 2.5}});
  table.columns[1].isNumeric = true;
  table.columns[1].decimals = 2;
  const std::string html = htmlOf(table);
  EXPECT_EQ(html.find("<script"), std::string::npos);
  EXPECT_NE(html.find("&lt;script&gt;alert(1)&lt;/script&gt; &amp; &quot;a&quot;"), std::string::npos);
  EXPECT_NE(html.find("<title>&lt;T&gt; &amp; &quot;more&quot;</title>"), std::string::npos);
  EXPECT_NE(html.find("<td class=\"number\">2.50</td>"), std::string::npos);
}

TEST(NaturalOrder, CountsNumbersInTexts) {
  const std::vector<std::string> ordered{"",
                                         "A",
                                         "A1",
                                         "A2",
                                         "a02b",
                                         "A10",
                                         "A10.2",
                                         "A10.10",
                                         "AB1",
                                         "AB01x",
                                         "Ä1",
                                         "Ä99999999999999999999",
                                         "Ä100000000000000000000"};
  std::vector<std::string> shuffled(ordered.rbegin(), ordered.rend());
  std::ranges::sort(shuffled, [](const auto& a, const auto& b) { return compareNaturally(a, b) < 0; });
  EXPECT_EQ(shuffled, ordered);
  EXPECT_EQ(compareNaturally("ab12", "AB12"), 0);
  EXPECT_NE(compareNaturally("A1", "A01"), 0);
}

TEST(Totals, AreOfTheRowsOfTheirGroups) {
  Table table;
  table.groupColumns = 2;
  for (const TotalKind total : {TotalKind::None, TotalKind::None, TotalKind::Count, TotalKind::Sum, TotalKind::Mean,
                                TotalKind::Least, TotalKind::Most})
    table.columns.emplace_back().total = total;
  const auto add = [&](const char* outer, const char* inner, Maybe<double> number) {
    TableRow& row = table.rows.emplace_back();
    row.cells = {{outer, {}}, {inner, {}}, {number ? "x" : "", {}}};
    for (int i = 0; i < 4; ++i) row.cells.push_back({number ? "n" : "", number});
  };
  add("A", "p", 1.0);
  add("a", "P", 2.0);
  add("A", "q", {});
  add("B", "q", -6.0);
  addTotals(table, true, true);
  std::vector<std::string> lines;
  for (const TableRow& row : table.rows) {
    if (row.kind == TableRow::Kind::Data) continue;
    std::string line = std::to_string(row.first);
    for (const TableCell& cell : row.cells) line += "|" + cell.text;
    lines.push_back(line);
  }
  EXPECT_EQ(lines, (std::vector<std::string>{"0|a|P total|2|3|1.5|1|2", "3|A|q total|0|0|||", "0|A total||2|3|1.5|1|2",
                                             "6|B|q total|1|-6|-6|-6|-6", "6|B total||1|-6|-6|-6|-6",
                                             "0|Total||3|-3|-1|-6|2"}));
}

}  // namespace
}  // namespace quorvel::report
