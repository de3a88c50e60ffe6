// The formats of Task Links, character by character: existing drawings contain these texts.
#include <gtest/gtest.h>

#include "base/basic_text.h"
#include "links/task_link_format.h"
#include "vocab/parse.h"

namespace quorvel::addin {
namespace {

FormatParts partsWith(std::string_view abbreviations, std::string separator = ",") {
  return {parse("Seconds;Minutes;Hours;Days;Weeks", ";"), parse(abbreviations, ";"), std::move(separator)};
}

TEST(LinkFormat, TextsAreExact) {
  const FormatParts parts = partsWith("s;m;h;d;w");
  const struct {
    LinkFormat format;
    const char* text;
  } cases[] = {
      {LinkFormat::DescriptionAndTime,
       R"(IF(STRSAME(Prop.Time_Units,"Seconds"),"'"&User.Single_TaskLink&"' ' ('0.##'s)'",)"
       R"(IF(STRSAME(Prop.Time_Units,"Minutes"),"'"&User.Single_TaskLink & "' ' ('0.##'m)'",)"
       R"(IF(STRSAME(Prop.Time_Units,"Hours"),"'"&User.Single_TaskLink &"' ' ('0.##'h)'",)"
       R"(IF(STRSAME(Prop.Time_Units,"Days"),"'"&User.Single_TaskLink&"' ' ('0.###'d)'",)"
       R"("'"&User.Single_TaskLink&"' ' ('0.###'w)'")))))"},
      {LinkFormat::DescriptionAndTimeAboveZero,
       R"(IF(STRSAME(Prop.Time_Units,"Seconds"),"'"&User.Single_TaskLink&"' ' ('0.##'s)'",)"
       R"(IF(STRSAME(Prop.Time_Units,"Minutes"),"'"&User.Single_TaskLink&"' ' ('0.##'m)'",)"
       R"(IF(STRSAME(Prop.Time_Units,"Hours"),"'"&User.Single_TaskLink&"' ' ('0.##'h)'",)"
       R"(IF(STRSAME(Prop.Time_Units,"Days"),"'"&User.Single_TaskLink&"' ' ('0.###'d)'",)"
       R"("'"&User.Single_TaskLink&"' ' ('0.###'w)'")))))"},
      {LinkFormat::TimeOnly, R"(IF(STRSAME(Prop.Time_Units,"Seconds"),"' ('0.##'s)'",)"
                             R"(IF(STRSAME(Prop.Time_Units,"Minutes"),"' ('0,##'m)'",)"
                             R"(IF(STRSAME(Prop.Time_Units,"Hours"),"' ('0,##'h)'",)"
                             R"(IF(STRSAME(Prop.Time_Units,"Days"),"' ('0,###'d)'",)"
                             R"("' ('0.###'w)'")))))"},
      {LinkFormat::TimeOnlyAboveZero, R"(IF(STRSAME(Prop.Time_Units,"Seconds"),"' ('0.##'s)'",)"
                                      R"(IF(STRSAME(Prop.Time_Units,"Minutes"),"' ('0.##'m)'",)"
                                      R"(IF(STRSAME(Prop.Time_Units,"Hours"),"' ('0.##'h)'",)"
                                      R"(IF(STRSAME(Prop.Time_Units,"Days"),"' ('0.##'d)'",)"
                                      R"("' ('0.###'w)'")))))"},
      {LinkFormat::DescriptionOnly, R"(= IF(StrSame(Prop.Time_Units,"Seconds"),"'"&User.Single_TaskLink&" ' ' ",)"
                                    R"(IF(StrSame(Prop.Time_Units,"Minutes"),"'"&User.Single_TaskLink&" ' ' ",)"
                                    R"(IF(StrSame(Prop.Time_Units,"Hours"),"'"&User.Single_TaskLink&" ' '",)"
                                    R"(IF(StrSame(Prop.Time_Units,"Days"),"'"&User.Single_TaskLink&" ' ' ",)"
                                    R"("'"&User.Single_TaskLink&" ' ' ")))))"},
      {LinkFormat::Empty, R"(= IF(StrSame(Prop.Time_Units,"Seconds"),"",IF(StrSame(Prop.Time_Units,"Minutes"),"",)"
                          R"(IF(StrSame(Prop.Time_Units,"Hours"),"",IF(StrSame(Prop.Time_Units,"Days"),"","")))))"},
  };
  for (const auto& c : cases) EXPECT_EQ(linkFormat(c.format, parts), c.text);
}

TEST(LinkFormat, TheMachinesSeparatorIsBetweenArguments) {
  EXPECT_EQ(linkFormat(LinkFormat::TimeOnlyAboveZero, partsWith(";sec;min;hr;dy;wk;", ";")),
            R"(IF(STRSAME(Prop.Time_Units;"Seconds");"' ('0.##'sec)'";)"
            R"(IF(STRSAME(Prop.Time_Units;"Minutes");"' ('0.##'min)'";)"
            R"(IF(STRSAME(Prop.Time_Units;"Hours");"' ('0.##'hr)'";)"
            R"(IF(STRSAME(Prop.Time_Units;"Days");"' ('0.##'dy)'";)"
            R"("' ('0.###'wk)'")))))");
}

TEST(LinkFormat, SwitchesAndTimeChooseTheFormat) {
  using enum LinkFormat;
  const Maybe<double> failed;
  const Maybe<LinkFormat> none;
  const struct {
    Maybe<double> description, time, timeAboveZero;
    Maybe<LinkFormat> withTime, withoutTime;
  } cases[] = {
      {1, 1, 0, DescriptionAndTime, DescriptionAndTime},
      {1, 1, 1, DescriptionAndTimeAboveZero, DescriptionOnly},
      {1, 1, 2, DescriptionAndTimeAboveZero, DescriptionOnly},
      {0, 1, 0, TimeOnly, TimeOnly},
      {0, 1, 1, TimeOnlyAboveZero, Empty},
      {0, 1, 2, TimeOnlyAboveZero, Empty},
      {1, 0, failed, DescriptionOnly, DescriptionOnly},
      {0, 0, 1, Empty, Empty},
      {1, 1, failed, none, none},
      {failed, 0, 0, none, none},
  };
  for (const auto& c : cases) {
    Maybe<LinkFormat> withTime, withoutTime;
    for (const LinkFormatRule& rule : linkFormatRules()) {
      if (!rule.fits(c.description, c.time, c.timeAboveZero)) continue;
      withTime = rule.format;
      withoutTime = rule.testsTime ? rule.otherwise : rule.format;
    }
    const auto shown = [](const Maybe<LinkFormat>& format) { return format ? static_cast<int>(*format) : -1; };
    EXPECT_EQ(shown(withTime), shown(c.withTime)) << &c - cases;
    EXPECT_EQ(shown(withoutTime), shown(c.withoutTime)) << &c - cases;
  }
}

TEST(LinkFormat, ApostrophesAreEscapedInTheQuotedText) {
  EXPECT_EQ(withEscapedApostrophes("Boss's OK"), R"(Boss'\''s OK)");
}

}  // namespace
}  // namespace quorvel::addin
