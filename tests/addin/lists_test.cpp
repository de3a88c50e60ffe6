// Splitting lists, the index of a host formula, and the lists that must match one to one.
#include <gtest/gtest.h>

#include "vocab/default_lists.h"
#include "vocab/parse.h"
#include "vocab/role_names.h"

namespace quorvel::addin {
namespace {

using Slots = std::vector<std::string>;

TEST(Parse, DropsEmptyTokensAndEndsInAnEmptySlot) {
  const struct {
    const char* text;
    const char* delimiters;
    Slots slots;
  } cases[] = {
      {"", ";", {}},
      {";;", ";", {}},
      {"a", ";", {"a", ""}},
      {";a;;b;", ";", {"a", "b", ""}},
      {"x.y/z", "./", {"x", "y", "z", ""}},
      {"Page-1", "/", {"Page-1", ""}},
      {"aXbxc", "x", {"aXb", "c", ""}},
      {"ä→ö→", "→", {"ä", "ö", ""}},
      {"é;è", ";", {"é", "è", ""}},
      {"a;b", "", {"a;b", ""}},
  };
  for (const auto& c : cases) EXPECT_EQ(parse(c.text, c.delimiters), c.slots) << c.text << " at " << c.delimiters;
  EXPECT_EQ(parse("a|b;c"), (Slots{"a", "b;c", ""}));
}

TEST(Parse, AnIndexOutsideTheSlotsFails) {
  const Slots slots = parse("Page-1", "/");
  EXPECT_EQ(slot(slots, 1).or_("failed"), "");
  EXPECT_FALSE(slot(slots, 2).has());
  EXPECT_FALSE(slot(slots, -1).has());
  EXPECT_FALSE(slot(parse("", "/"), 0).has());
}

TEST(FuncIndex, ReadsTheFirstArgument) {
  const struct {
    const char* formula;
    int index;
  } cases[] = {
      {"INDEX(3,Prop.Responsible_Role.Format)", 3},
      {"=INDEX( 12 ,Prop.Time_Units.Format)", 12},
      {"INDEX(-1,x)", -1},
      {"INDEX(3;Prop.Responsible_Role.Format)", 0},  // a host with another list separator
      {"INDEX(40000,x)", 0},
      {"INDEX(two,x)", 0},
      {"INDEX(,x)", 0},
      {"", 0},
      {"GUARD(", 0},
  };
  for (const auto& c : cases) EXPECT_EQ(funcIndex(c.formula), c.index) << c.formula;
}

TEST(RoleNames, ANewRoleIsInsertedAtItsSortedPlace) {
  const struct {
    const char *list, *name, *result;
  } cases[] = {
      {"", "Clerk", ";Clerk"},
      {";;", "the \"boss\"", ";the \"boss\""},  // the first role keeps its quotation marks
      {";Clerk", "Baker", ";Baker;Clerk"},
      {";Clerk", "clerk", ";clerk;Clerk"},
      {";Clerk;Director", "cook", ";Clerk;cook;Director"},
      {";Clerk;Director", "Editor", ";Clerk;Director;Editor"},
      {";the \"boss\"", "\"x\"", ";\"\"x\"\";the \"\"boss\"\""},
      {";Ärztin", "ähnlich", ";ähnlich;Ärztin"},
      {";b;a", "aa", ";aa;b;a"},  // an unsorted list stays as it is
  };
  for (const auto& c : cases) EXPECT_EQ(insertRoleName(parse(c.list, ";"), c.name), c.result) << c.list << c.name;
}

TEST(Defaults, AbbreviationsMatchTheirNames) {
  const Slots frequencies = parse(defaults::frequencies, ";");
  const Slots abbreviations = parse(defaults::frequencyAbbreviations, ";");
  ASSERT_EQ(frequencies.size(), abbreviations.size());
  EXPECT_EQ(frequencies[0] + abbreviations[0], "Ad HocAD");
  EXPECT_EQ(frequencies[12] + abbreviations[12], "Biennial (every two years)BI");
  EXPECT_EQ(parse(defaults::timeUnits, ";").size(), parse(defaults::timeUnitAbbreviations, ";").size());
}

}  // namespace
}  // namespace quorvel::addin
