// Report definitions: what is read, and what each bad one is refused with.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "formats/xml_text.h"
#include "report/definition/available_definitions.h"
#include "report/definition/read_definition.h"

namespace quorvel::report {
namespace {

constexpr const char* scope = "<scope shapes='tasks'/>";
constexpr const char* columns = "<columns><column title='ID' value='id'/></columns>";

std::string report(const std::string& inside) { return "<report title='T'>" + inside + "</report>"; }
std::string withColumn(const std::string& attributes) {
  return report(scope + ("<columns><column title='C' " + attributes + "/></columns>"));
}
std::string withFilter(const std::string& inside) {
  return report(scope + ("<filter>" + inside + "</filter>") + columns);
}
std::string times(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST(Definition, EveryPartIsRead) {
  const ReadDefinition read = readDefinition(
      "\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><!-- a remark -->"
      "<report title=' Times '><columns><column title='H' value='prop.task_completion_time' as='duration' unit='hours' "
      "total='mean' width='12'/><across value='entry' shows='entry-letter' total='count'/></columns>"
      "<totals groups='no' all='yes'/><scope shapes='tasks' rows='role  guideline' page='A' backgrounds='yes'/>"
      "<description>Who &amp; when</description><group title='P' value='page' order='descending'/>"
      "<sort value='User.N' as='number'/>"
      "<filter><where value='id' is='begins-with' to=''/><any><where value='page' "
      "is='empty'/></any></filter></report>");
  ASSERT_EQ(read.problem, "");
  const Definition& definition = read.definition;
  EXPECT_EQ(definition.title, "Times");
  EXPECT_EQ(definition.description, "Who & when");
  EXPECT_EQ(definition.entries, (std::vector{Entry::Role, Entry::Guideline}));
  EXPECT_TRUE(definition.page == "A" && definition.withBackgrounds && !definition.groupTotals && definition.grandTotal);
  const ColumnDefinition& column = definition.columns.at(0);
  EXPECT_TRUE(column.total == TotalKind::Mean && column.width == 12 && column.value.unit->name == "Hours");
  EXPECT_TRUE(definition.across->shown.field == Field::EntryLetter && definition.across->total == TotalKind::Count);
  EXPECT_TRUE(definition.groups.at(0).descending && definition.sorting.at(0).value.format == ValueFormat::Number);
  ASSERT_EQ(definition.filter.parts.size(), 2u);
  EXPECT_EQ(definition.filter.parts[1].kind, Condition::Kind::Any);
}

TEST(Definition, EachBadOneIsRefusedWithWhatToDo) {
  const struct {
    std::string xml, problem;
  } cases[] = {
      {"", "it is empty"},
      {"<report title='T'>", "not well-formed"},
      {"<!DOCTYPE report [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>" + report("&e;"), "document type"},
      {"<table/>", "begins with <report>"},
      {"<r:report xmlns:r='x' title='T'/>", "begins with <report>"},
      {"<report>" + std::string(scope) + columns + "</report>", "<report> needs title"},
      {report(columns), "has no <scope>"},
      {report(scope), "has no <columns>"},
      {report(scope + std::string("<columns/>")), "add a <column>"},
      {report(std::string(scope) + columns + "<colums/>"),
       "unknown element \"colums\"; it may have description, scope"},
      {report(std::string(scope) + columns + scope), "more than one <scope>"},
      {report(std::string(scope) + columns + "text"), "contains the text \"text\""},
      {report(std::string("<scope/>") + columns), "<scope> needs shapes"},
      {report(std::string("<scope shapes='boxes'/>") + columns), "one of tasks, links, connectors, hyperlinks, shapes"},
      {report(std::string("<scope shapes='links' rows='role'/>") + columns), "only shapes=\"tasks\""},
      {withColumn("value='id' tilte='x'"), "unknown attribute \"tilte\"; it may have title, value"},
      {withColumn("value='Width'"), "it is Prop. or User. with a row's name, or one of page, id"},
      {withColumn("value='Prop.A' total='sum'"), "of texts; add as=\"number\""},
      {withColumn("value='Prop.A' as='duration'"), "needs unit"},
      {withColumn("value='Prop.A' as='duration' unit='years'"), "one of seconds, minutes, hours, days, weeks"},
      {withColumn("value='Prop.A' unit='hours'"), "only as=\"duration\""},
      {withColumn("value='id' as='number'"), "always text"},
      {withColumn("value='id' width='0'"), "from 1 to 200"},
      {withFilter(""), "<filter> is empty"},
      {withFilter("<any/>"), "<any> is empty"},
      {withFilter("<where value='id' is='like' to='a'/>"), "one of equal, not-equal"},
      {withFilter("<where value='id' is='equal'/>"), "<where> needs to"},
      {withFilter("<where value='id' is='empty' to='a'/>"), "remove to"},
      {withFilter("<where value='Prop.A' as='number' is='more' to='ten'/>"), "no number such as 30"},
      {withFilter("<where value='Prop.A' as='number' is='more' to='inf'/>"), "no number such as 30"},
      {withFilter("<where value='Prop.A' as='number' is='contains' to='1'/>"), "remove as"},
      {withFilter(times(201, "<where value='id' is='empty'/>")), "more than 200 conditions"},
      {withFilter(times(20, "<all>") + "<where value='id' is='empty'/>" + times(20, "</all>")), "nested too deep"},
      {withFilter(times(5000, "<all>") + times(5000, "</all>")), "nested too deep"},
      {report(std::string(scope) + columns + times(4, "<group title='G' value='page'/>")), "more than 3 <group>"},
      {report("<description>" + std::string(largestDefinition, 'x') + "</description>"), "more than 256 KB"},
  };
  for (const auto& each : cases) {
    const std::string problem = readDefinition(each.xml).problem;
    EXPECT_NE(problem.find(each.problem), std::string::npos) << each.xml.substr(0, 200) << "\n  " << problem;
    EXPECT_LT(problem.size(), 300u);
    EXPECT_EQ(problem.find('\n'), std::string::npos);
  }
}

TEST(Definition, AFileMayHaveAnyEncodingAndBecomeTheTextOfACell) {
  const std::string body =
      "<report title='Gr\xC3\xB6\xC3\x9F"
      "e'><scope shapes='tasks'/><columns>"
      "<column title='ID' value='id'/></columns></report>";
  std::string utf16 = "\xFF\xFE", latin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";
  for (std::size_t i = 0; i < body.size(); ++i) {
    const bool isPair = body[i] == '\xC3';
    const char letter = isPair ? static_cast<char>(body[++i] + 0x40) : body[i];
    (utf16 += letter) += '\0';
    latin1 += letter;
  }
  const std::string file = testing::TempDir() + "quorvel-definition-" + std::to_string(getpid()) + ".xml";
  for (const std::string& bytes :
       {body, "\xEF\xBB\xBF" + body, "<?xml version='1.0' encoding='utf-8'?>" + body, utf16, latin1}) {
    std::ofstream(file, std::ios::binary) << bytes;
    EXPECT_EQ(definitionInFile(file).definition.title, "Größe") << bytes;
    EXPECT_EQ(readDefinition(formats::xmlTextOfFile(file).or_({})).definition.title, "Größe") << bytes;
  }
  for (const std::string& bad : {std::string("<report>"), "<!DOCTYPE a>" + body, std::string(2 << 20, ' ') + body}) {
    std::ofstream(file, std::ios::binary) << bad;
    EXPECT_FALSE(formats::xmlTextOfFile(file)) << bad.substr(0, 40);
    EXPECT_NE(definitionInFile(file).problem, "");
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace quorvel::report
