// Text as users' files contain it, and the few rules of Basic that formulas in drawings need.
#include "base/text.h"

#include <gtest/gtest.h>

#include "base/basic_text.h"
#include "base/maybe.h"

namespace quorvel {
namespace {

TEST(Text, BytesThatAreNoUtf8CountAsOneReplacementEach) {
  const struct {
    const char* what;
    std::string bytes;
    std::u32string letters;
  } cases[] = {
      {"letters of one to four bytes", "a\u00FF\u20AC\U0001F600", U"a\u00FF\u20AC\U0001F600"},
      {"an overlong slash", "\xC0\xAF", U"\uFFFD\uFFFD"},
      {"an overlong letter of three bytes", "\xE0\x80\xAF", U"\uFFFD\uFFFD\uFFFD"},
      {"half of a surrogate pair", "\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},
      {"beyond the last letter", "\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"cut short", "a\xE2\x82", U"a\uFFFD\uFFFD"},
      {"a following byte alone", "\x80z", U"\uFFFDz"},
  };
  for (const auto& each : cases) {
    std::u32string read;
    for (std::size_t at = 0; at < each.bytes.size();) read += decodeNext(each.bytes, at);
    EXPECT_EQ(read, each.letters) << each.what;
    EXPECT_EQ(lengthOf(each.bytes), each.letters.size()) << each.what;
  }
}

TEST(Text, NumbersAreReadAsBasicReadsThem) {
  const struct {
    const char* text;
    double value;
  } cases[] = {{"2.16", 2.16}, {" 1 2 3", 123}, {"+5", 5},    {"-7 apples", -7}, {"1e3", 1000},
               {"abc", 0},     {"", 0},         {"inf", 0},   {"nan", 0},        {".5", 0.5},
               {"2,5", 2},     {"0x10", 0},     {"1e999", 0}, {"\t4\n2", 42}};
  for (const auto& each : cases) EXPECT_EQ(val(each.text), each.value) << each.text;
}

TEST(Text, PiecesAreCountedInLetters) {
  EXPECT_EQ(mid("\u00C4\u00D6\u00DCx", 2, 2), "\u00D6\u00DC");
  EXPECT_EQ(mid("abc", 4, 1) + mid("abc", 0, 2) + mid("abc", 2, -1), "");
  EXPECT_EQ(left("\u00C4b", 1) + right("b\u00C4", 1) + right("ab", 9), "\u00C4\u00C4ab");
  EXPECT_EQ(inStr("\u00C4\u00D6x", "x"), 3);
  EXPECT_EQ(inStrRev("x\u00D6x", "x"), 3);
  EXPECT_EQ(format00(7) + " " + format00(123) + " " + format00(-3), "07 123 -03");
  EXPECT_EQ(shortestNumber(-0.0) + " " + shortestNumber(0.1) + " " + shortestNumber(1e20), "0 0.1 1e+20");
  EXPECT_EQ(fixedNumber(-0.001, 2) + " " + fixedNumber(1.5, 3), "0 1.5");
}

/// A condition on a failed read must not hold, whichever way it is written.
TEST(Maybe, NoComparisonHoldsWithAMissingValue) {
  const Maybe<int> missing, five = 5;
  EXPECT_FALSE(missing == 5 || missing != 5 || missing < 5 || missing > 5 || missing <= 5 || missing >= 5);
  EXPECT_TRUE(five == 5 && five != 4 && five < 6 && five > 4 && five <= 5 && five >= 5);
  int kept = 3;
  EXPECT_FALSE(keep(kept, missing));
  EXPECT_EQ(kept, 3);
}

}  // namespace
}  // namespace quorvel
