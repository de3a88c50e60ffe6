// Profile files as other programs and users write them.
#include "base/profile_text.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

constexpr const char* profile =
    "; set up by hand\r\n"
    "Stray=1\r\n"
    "[Uninstall]\r\n"
    ";Quorvel Path=c:\\old\r\n"
    "  Quorvel Path = \"d:\\maps and more\"  \r\n"
    "Quorvel Path=e:\\second\r\n"
    "\r\n"
    "[Toolbar]\r\n"
    "Position=1\r\n"
    "Note=a=b;c\r\n"
    "\r\n"
    "[toolbar]\r\n"
    "Top=9\r\n";

TEST(ProfileText, Reads) {
  const struct {
    const char *section, *key, *value;
  } cases[] = {
      {"uninstall", "QUORVEL PATH", "d:\\maps and more"},
      {"Toolbar", "Position", "1"},
      {"Toolbar", "Note", "a=b;c"},
      {"Toolbar", "Top", nullptr},  // the first section of the name counts
      {"Toolbar", "Stray", nullptr},
      {"Missing", "Top", nullptr},
  };
  for (const auto& c : cases) {
    const auto value = profileValue(profile, c.section, c.key);
    EXPECT_EQ(value.has(), c.value != nullptr) << c.key;
    EXPECT_EQ(value.or_({}), c.value ? c.value : "") << c.key;
  }
  EXPECT_EQ(profileValue("\xEF\xBB\xBF[a]\nk='v'", "a", "k").or_({}), "v");
}

TEST(ProfileText, WritesAndKeepsTheRest) {
  const std::string before = profile;
  const auto changed = [&](const char* section, const char* key, const char* value) {
    return withProfileValue(before, section, key, value).or_("refused");
  };
  const auto replaced = [&](std::string part, std::string by) {
    std::string text = before;
    return text.replace(text.find(part), part.size(), by);
  };
  EXPECT_EQ(changed("TOOLBAR", "position", "4"), replaced("Position=1", "position=4"));
  EXPECT_EQ(changed("Toolbar", "Left", "7"), replaced("Note=a=b;c\r\n", "Note=a=b;c\r\nLeft=7\r\n"));
  EXPECT_EQ(changed("New", "k", "v"), before + "[New]\r\nk=v\r\n");
  EXPECT_EQ(withProfileValue("[a]\nk=1", "a", "l", "2").or_({}), "[a]\nk=1\nl=2\n");
  EXPECT_EQ(withProfileValue("", "a", "k", " \"v\" ").or_({}), "[a]\nk=\" \"v\" \"\n");
  EXPECT_EQ(profileValue(withProfileValue("", "a", "k", " \"v\" ").or_({}), "a", "k").or_({}), " \"v\" ");
  for (const char* bad : {"", "a=b", "[a", ";a", "a\nb"}) EXPECT_FALSE(withProfileValue(before, "a", bad, "v").has());
  EXPECT_FALSE(withProfileValue(before, "a", "k", "v\n[b]").has());
}

}  // namespace
}  // namespace quorvel
