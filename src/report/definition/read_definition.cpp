#include "report/definition/read_definition.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <pugixml.hpp>
#include <span>

#include "base/text.h"
#include "formats/package/xml_reading.h"
#include "host/cells/cell_name.h"
#include "host/cells/cell_table.h"

namespace quorvel::report {
namespace {

constexpr std::size_t mostColumns = 200, mostGroups = 3, mostSortKeys = 16, mostConditions = 200, longestText = 2000;
constexpr int deepestCondition = 16, widestColumn = 200;

template <class Value>
struct Word {
  std::string_view word;
  Value value;
};

constexpr Word<Field> fields[]{{"page", Field::Page},
                               {"id", Field::Id},
                               {"name", Field::Name},
                               {"kind", Field::Kind},
                               {"description", Field::Description},
                               {"from", Field::From},
                               {"to", Field::To},
                               {"target-exists", Field::TargetExists},
                               {"supporting-roles", Field::SupportingRoles},
                               {"guidelines", Field::Guidelines},
                               {"resources", Field::Resources},
                               {"entry", Field::Entry},
                               {"entry-kind", Field::EntryKind},
                               {"entry-letter", Field::EntryLetter}};
constexpr Word<Subject> subjects[]{{"tasks", Subject::Tasks},
                                   {"links", Subject::Links},
                                   {"connectors", Subject::Connectors},
                                   {"hyperlinks", Subject::Hyperlinks},
                                   {"shapes", Subject::Shapes}};
constexpr Word<Entry> entryKinds[]{
    {"role", Entry::Role}, {"guideline", Entry::Guideline}, {"resource", Entry::Resource}};
constexpr Word<ValueFormat> valueFormats[]{
    {"text", ValueFormat::Text}, {"number", ValueFormat::Number}, {"duration", ValueFormat::Duration}};
constexpr Word<TotalKind> totals[]{{"count", TotalKind::Count},
                                   {"sum", TotalKind::Sum},
                                   {"mean", TotalKind::Mean},
                                   {"min", TotalKind::Least},
                                   {"max", TotalKind::Most}};
constexpr Word<bool> orders[]{{"ascending", false}, {"descending", true}};
constexpr Word<bool> answers[]{{"yes", true}, {"no", false}};
constexpr Word<Comparison> comparisons[]{{"equal", Comparison::Equal},       {"not-equal", Comparison::NotEqual},
                                         {"less", Comparison::Less},         {"at-most", Comparison::AtMost},
                                         {"more", Comparison::More},         {"at-least", Comparison::AtLeast},
                                         {"contains", Comparison::Contains}, {"begins-with", Comparison::BeginsWith},
                                         {"empty", Comparison::Empty},       {"not-empty", Comparison::NotEmpty}};

using Names = std::initializer_list<std::string_view>;

std::string listOf(const auto& names) {
  std::string list;
  for (const std::string_view name : names) list += (list.empty() ? "" : ", ") + std::string(name);
  return list;
}

template <class Words>
std::string wordsOf(const Words& words) {
  std::vector<std::string_view> names;
  for (const auto& each : words) names.push_back(each.word);
  return listOf(names);
}

/// A piece of the definition in a sentence: short, and without line ends.
std::string quoted(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string piece;
  std::size_t characters = 0;
  for (std::size_t at = 0; at < text.size() && characters < longest; ++characters) {
    const char32_t next = decodeNext(text, at);
    appendUtf8(piece, next < U' ' ? U' ' : next);
  }
  return "\"" + piece + (lengthOf(text) > longest ? "…\"" : "\"");
}

std::string tag(pugi::xml_node node) { return "<" + std::string(node.name()) + ">"; }

class Reader {
 public:
  ReadDefinition read(std::string_view xml) {
    readXml(xml);
    return std::move(result_);
  }

 private:
  void readXml(std::string_view xml) {
    if (xml.size() > largestDefinition)
      return fail("it has more than " + std::to_string(largestDefinition / 1024) + " KB; shorten it");
    std::string bytes(xml);
    pugi::xml_document document;
    if (const std::string wrong = formats::parseXml(document, std::span(bytes)); !wrong.empty())
      return fail(wrong + "; correct it in a text editor");
    const pugi::xml_node root = document.document_element();
    if (root.name() != std::string_view("report"))
      return fail("its first element is " + quoted(root.name()) + "; a report definition begins with <report>");
    readReport(root);
  }

  void readReport(pugi::xml_node root) {
    Definition& definition = result_.definition;
    allow(root, {"title"}, {"description", "scope", "filter", "columns", "group", "sort", "totals"});
    definition.title = std::string(trimmed(required(root, "title")));
    definition.description = std::string(trimmed(formats::innerText(single(root, "description"))));
    if (definition.description.size() > longestText) fail("<description> is too long; shorten it");
    allow(single(root, "description"), {}, {}, Texts::Allowed);
    readScope(single(root, "scope"));
    if (const pugi::xml_node filter = single(root, "filter")) {
      allow(filter, {}, {"where", "all", "any"});
      definition.filter = conditionsIn(filter, Condition::Kind::All, 0);
    }
    readColumns(single(root, "columns"));
    for (const pugi::xml_node node : root.children("group")) {
      allow(node, {"value", "title", "as", "unit", "order"}, {});
      definition.groups.push_back({required(node, "title"), valueOf(node), one(node, "order", orders, false)});
    }
    for (const pugi::xml_node node : root.children("sort")) {
      allow(node, {"value", "as", "unit", "order"}, {});
      definition.sorting.push_back({valueOf(node), one(node, "order", orders, false)});
    }
    if (definition.groups.size() > mostGroups) fail("it has more than 3 <group>; remove some");
    if (definition.sorting.size() > mostSortKeys) fail("it has more than 16 <sort>; remove some");
    if (const pugi::xml_node node = single(root, "totals")) {
      allow(node, {"groups", "all"}, {});
      definition.groupTotals = one(node, "groups", answers, true);
      definition.grandTotal = one(node, "all", answers, true);
    }
  }

  void readScope(pugi::xml_node node) {
    Definition& definition = result_.definition;
    if (!node) return fail("it has no <scope>; add <scope shapes=\"tasks\"/>");
    allow(node, {"shapes", "rows", "page", "backgrounds"}, {});
    definition.subjects = several(node, "shapes", subjects);
    if (definition.subjects.empty()) required(node, "shapes");
    definition.entries = several(node, "rows", entryKinds);
    if (!definition.entries.empty() && definition.subjects != std::vector{Subject::Tasks})
      fail("<scope> has rows=" + quoted(node.attribute("rows").value()) + ", which only shapes=\"tasks\" can have");
    definition.page = node.attribute("page").value();
    definition.withBackgrounds = one(node, "backgrounds", answers, false);
  }

  void readColumns(pugi::xml_node node) {
    Definition& definition = result_.definition;
    if (!node) return fail("it has no <columns>; add the columns of the table");
    allow(node, {}, {"column", "across"});
    for (const pugi::xml_node each : node.children("column")) {
      allow(each, {"title", "value", "as", "unit", "total", "width"}, {});
      ColumnDefinition column{required(each, "title"), valueOf(each), totalOf(each)};
      if (each.attribute("width")) column.width = widthOf(each);
      checkTotal(each, column.value, column.total);
      definition.columns.push_back(std::move(column));
    }
    if (definition.columns.empty()) fail("<columns> is empty; add a <column>");
    if (definition.columns.size() > mostColumns) fail("<columns> has more than 200 <column>; remove some");
    if (const pugi::xml_node across = single(node, "across")) {
      allow(across, {"value", "shows", "as", "unit", "total"}, {});
      AcrossDefinition read;
      read.value = namedValue(across, required(across, "value"));
      read.shown = namedValue(across, required(across, "shows"));
      setFormat(across, read.shown);
      read.total = totalOf(across);
      checkTotal(across, read.shown, read.total);
      definition.across = read;
    }
  }

  TotalKind totalOf(pugi::xml_node node) { return one(node, "total", totals, TotalKind::None); }

  void checkTotal(pugi::xml_node node, const ReportValue& value, TotalKind total) {
    if (total != TotalKind::None && total != TotalKind::Count && value.format == ValueFormat::Text)
      fail(tag(node) + " has total=" + quoted(node.attribute("total").value()) +
           " of texts; add as=\"number\" or as=\"duration\", or count them");
  }

  int widthOf(pugi::xml_node node) {
    const int width = formats::wholeNumber(node.attribute("width").value(), 0);
    if (width < 1 || width > widestColumn)
      fail(tag(node) + " has width=" + quoted(node.attribute("width").value()) +
           "; it is a number of characters from 1 to 200");
    return width;
  }

  Condition conditionsIn(pugi::xml_node node, Condition::Kind kind, int depth) {
    Condition condition;
    condition.kind = kind;
    if (depth > deepestCondition) {
      fail("the conditions of <filter> are nested too deep; simplify them");
      return condition;
    }
    for (const pugi::xml_node child : node) {
      if (child.type() != pugi::node_element || hasFailed()) continue;
      if (++conditions_ > mostConditions) fail("<filter> has more than 200 conditions; remove some");
      if (child.name() == std::string_view("where")) {
        condition.parts.push_back(comparisonOf(child));
      } else {
        allow(child, {}, {"where", "all", "any"});
        const bool any = child.name() == std::string_view("any");
        condition.parts.push_back(conditionsIn(child, any ? Condition::Kind::Any : Condition::Kind::All, depth + 1));
      }
    }
    if (condition.parts.empty()) fail(tag(node) + " is empty; add a <where> or remove it");
    return condition;
  }

  Condition comparisonOf(pugi::xml_node node) {
    allow(node, {"value", "as", "unit", "is", "to"}, {});
    Condition condition;
    condition.kind = Condition::Kind::Compare;
    condition.value = valueOf(node);
    required(node, "is");
    condition.comparison = one(node, "is", comparisons, Comparison::Equal);
    const bool needsNone = condition.comparison == Comparison::Empty || condition.comparison == Comparison::NotEmpty;
    if (needsNone && node.attribute("to")) fail("<where> with is=\"empty\" compares with nothing; remove to");
    if (needsNone) return condition;
    condition.text = required(node, "to", Empty::Allowed);
    const bool isOfTexts =
        condition.comparison == Comparison::Contains || condition.comparison == Comparison::BeginsWith;
    if (condition.value.format == ValueFormat::Text) return condition;
    if (isOfTexts) fail("<where> compares a number with is=" + quoted(node.attribute("is").value()) + "; remove as");
    const auto [end, wrong] =
        std::from_chars(condition.text.data(), condition.text.data() + condition.text.size(), condition.number);
    if (wrong != std::errc() || end != condition.text.data() + condition.text.size() ||
        !std::isfinite(condition.number))
      fail("<where> has to=" + quoted(condition.text) + ", which is no number such as 30 or 2.5");
    return condition;
  }

  ReportValue valueOf(pugi::xml_node node) {
    ReportValue value = namedValue(node, required(node, "value"));
    setFormat(node, value);
    return value;
  }

  ReportValue namedValue(pugi::xml_node node, const std::string& name) {
    ReportValue value;
    const auto known = std::ranges::find(fields, name, &Word<Field>::word);
    if (known != std::end(fields)) {
      value.field = known->value;
      return value;
    }
    if (const auto cell = host::parseCellName(name)) value.cell = *cell;
    const host::SectionNumber section = value.cell.section;
    if (section != host::SectionNumber::Property && section != host::SectionNumber::User)
      fail(tag(node) + " has the value " + quoted(name) + "; it is Prop. or User. with a row's name, or one of " +
           wordsOf(fields));
    return value;
  }

  void setFormat(pugi::xml_node node, ReportValue& value) {
    value.format = one(node, "as", valueFormats, ValueFormat::Text);
    if (value.format == ValueFormat::Duration) {
      for (const schema::TimeUnit& unit : schema::timeUnits) {
        if (foldCase(unit.name) == required(node, "unit")) value.unit = &unit;
      }
      if (!value.unit && !hasFailed())
        fail(tag(node) + " has unit=" + quoted(node.attribute("unit").value()) +
             "; it is one of seconds, minutes, hours, days, weeks");
    } else if (node.attribute("unit")) {
      fail(tag(node) + " has a unit, which only as=\"duration\" needs");
    }
    if (value.format != ValueFormat::Text && value.field != Field::Cell)
      fail(tag(node) + " has a value that is always text; remove as");
  }

  /// Null when there is none; more than one is a problem.
  pugi::xml_node single(pugi::xml_node node, const char* name) {
    const pugi::xml_node child = node.child(name);
    if (child.next_sibling(name)) fail(tag(node) + " has more than one " + tag(child) + "; remove the others");
    return child;
  }

  enum class Empty { Refused, Allowed };
  std::string required(pugi::xml_node node, const char* name, Empty empty = Empty::Refused) {
    const pugi::xml_attribute attribute = node.attribute(name);
    std::string text = attribute.value();
    if (!attribute || (empty == Empty::Refused && trimmed(text).empty()))
      fail(tag(node) + " needs " + name + "=\"…\"; add it");
    if (text.size() > longestText) fail(tag(node) + " has a " + name + " that is too long; shorten it");
    // A title is one line, wherever it is shown.
    std::ranges::replace_if(
        text, [](unsigned char each) { return each < ' '; }, ' ');
    return text;
  }

  template <class Value, std::size_t n>
  Value one(pugi::xml_node node, const char* name, const Word<Value> (&words)[n], Value otherwise) {
    const pugi::xml_attribute attribute = node.attribute(name);
    return attribute ? known(node, name, attribute.value(), words, otherwise) : otherwise;
  }

  template <class Value, std::size_t n>
  std::vector<Value> several(pugi::xml_node node, const char* name, const Word<Value> (&words)[n]) {
    std::vector<Value> values;
    for (const std::string_view word : splitAt(node.attribute(name).value(), ' ')) {
      if (word.empty() || hasFailed()) continue;
      const Value value = known(node, name, word, words, words[0].value);
      if (std::ranges::find(values, value) == values.end()) values.push_back(value);
    }
    return values;
  }

  template <class Value, std::size_t n>
  Value known(pugi::xml_node node, const char* name, std::string_view word, const Word<Value> (&words)[n],
              Value otherwise) {
    const auto found = std::ranges::find(words, word, &Word<Value>::word);
    if (found != std::end(words)) return found->value;
    fail(tag(node) + " has " + name + "=" + quoted(word) + "; it is one of " + wordsOf(words));
    return otherwise;
  }

  enum class Texts { Refused, Allowed };
  /// Whatever the element may not have is a problem.
  void allow(pugi::xml_node node, Names attributes, Names children, Texts texts = Texts::Refused) {
    if (!node) return;
    for (const pugi::xml_attribute attribute : node.attributes()) {
      if (std::ranges::find(attributes, attribute.name()) != attributes.end()) continue;
      return fail(tag(node) + " has an unknown attribute " + quoted(attribute.name()) + "; " +
                  (attributes.size() == 0 ? "it has none" : "it may have " + listOf(attributes)));
    }
    for (const pugi::xml_node child : node) {
      if (child.type() == pugi::node_element && std::ranges::find(children, child.name()) == children.end())
        return fail(tag(node) + " has an unknown element " + quoted(child.name()) + "; " +
                    (children.size() == 0 ? "it has none" : "it may have " + listOf(children)));
      const bool isText = child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
      if (isText && texts == Texts::Refused && !trimmed(child.value()).empty())
        return fail(tag(node) + " contains the text " + quoted(trimmed(child.value())) + "; remove it");
    }
  }

  bool hasFailed() const { return !result_.problem.empty(); }
  /// The first problem is the one that is reported.
  void fail(std::string problem) {
    if (!hasFailed()) result_.problem = std::move(problem);
  }

  ReadDefinition result_;
  std::size_t conditions_ = 0;
};

}  // namespace

ReadDefinition readDefinition(std::string_view xml) { return Reader().read(xml); }

}  // namespace quorvel::report
