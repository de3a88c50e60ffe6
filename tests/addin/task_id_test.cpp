// Task IDs as a user sees them: letters from the page's name, the keys of a number box, and the two dialogs.
#include "vocab/task_id.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "dialogs/ask_task_id_suggestion.h"
#include "dialogs/filter_number_key.h"
#include "dialogs/frm_copied_task_id_suggestion.h"
#include "dialogs/frm_task_id_suggestion.h"
#include "headless/headless_platform.h"

namespace quorvel::addin {
namespace {

TEST(TaskId, LettersComeFromThePageName) {
  const struct {
    const char* page;
    const char* letters;
  } cases[] = {
      {"AB Order entry", "AB"}, {"A Tasks", "A"}, {"ABCD Task", "ABCD"},
      {"ABCDE Task", "Z"},      {"Sales", "Z"},   {"Purchasing dept", "Z"},
      {" leading", "Z"},        {"", "Z"},        {"A ", "A"},
      {"ÄÖÜß Aufgabe", "ÄÖÜß"},
  };
  for (const auto& c : cases) EXPECT_EQ(taskLettersFromPageName(c.page), c.letters) << c.page;
}

TEST(TaskId, NumbersHaveTwoDigitsOrMore) {
  EXPECT_EQ(taskIdText("A", 7), "A07");
  EXPECT_EQ(taskIdText("A", 100), "A100");
  EXPECT_EQ(taskIdText("", 7), "07");
  EXPECT_EQ(numberInBox(""), 0);
  EXPECT_EQ(numberInBox(" 12a3"), 12);
  EXPECT_EQ(numberInBox("2147483646"), 2147483646);
  EXPECT_FALSE(numberInBox("2147483647")) << "the page's counter is one higher";
  EXPECT_FALSE(numberInBox("99999999999999999999999"));
}

class Dialogs : public testing::Test {
 protected:
  Control& control(Form& form, const char* name) {
    Control* found = form.find(name);
    if (!found) throw std::runtime_error(name);
    return *found;
  }
  void press(Control& box, std::string_view pressed) {
    for (const char key : pressed) box.pressKey(key);
  }

  HeadlessPlatform platform{"/install", "/nowhere"};
  dsrVisioConnect connect{platform};
};

TEST_F(Dialogs, ANumberBoxFiltersItsKeys) {
  frmTaskIdSuggestion form(connect);
  Control& box = control(form, "txtTaskNumber");
  const struct {
    const char* text;
    int key;
    bool noMinus, noPoint;
    bool passes;
  } cases[] = {
      {"", '0', true, true, true},
      {"1", '9', true, true, true},
      {"1", 'a', true, true, false},
      {"1", ' ', true, true, false},
      {"1", keys::backspace, true, true, true},
      {"", '-', true, true, false},
      {"1", '-', false, true, true},
      {"-1", '-', false, true, false},
      {"1", '.', true, true, false},
      {"1", '.', true, false, true},
      {"1.5", '.', true, false, false},
      {"12345", '6', true, true, false},
      {"12345", keys::backspace, true, true, false},  // a full box takes no key at all
      {"12345", keys::controlZ, true, true, true},
  };
  for (const auto& c : cases) {
    box.setText(c.text);
    platform.beeps = 0;
    EXPECT_EQ(filterNumberKey(platform, box, c.key, 5, c.noMinus, c.noPoint), c.passes ? c.key : 0)
        << c.text << " with key " << c.key;
    EXPECT_EQ(platform.beeps, c.passes ? 0 : 1) << c.text << " with key " << c.key;
  }
}

TEST_F(Dialogs, TheSuggestionFollowsBothBoxes) {
  frmTaskIdSuggestion form(connect);
  form.suggest("AB");
  form.open();
  EXPECT_EQ(control(form, "txtSuggestedTaskId").text(), "AB01");
  press(control(form, "txtTaskNumber"), "x2");
  EXPECT_EQ(control(form, "txtSuggestedTaskId").text(), "AB12");
  control(form, "txtTaskIdLetters").type("");
  EXPECT_EQ(control(form, "txtSuggestedTaskId").text(), "12");
}

TEST_F(Dialogs, OnlyOkAccepts) {
  frmTaskIdSuggestion form(connect);
  const std::function<void()> refusals[] = {
      [&] { form.close(); },
      [&] { control(form, "txtTaskIdLetters").pressKey(keys::escape); },
      [&] { control(form, "txtTaskNumber").pressKey(keys::escape); },
      [&] { control(form, "BtnOK").pressKey(keys::escape); },
  };
  for (const auto& refuse : refusals) {
    form.open();
    control(form, "BtnOK").click();
    EXPECT_FALSE(form.refused());
    EXPECT_FALSE(form.isOpen());
    form.open();
    refuse();
    EXPECT_TRUE(form.refused());
    EXPECT_FALSE(form.isOpen());
  }
}

TEST_F(Dialogs, ADialogInsideADialogIsAnotherOne) {
  // A script answers the first question with a drop that asks the second, and then refuses the first.
  int depth = 0;
  bool inner = false;
  platform.onForm = [&](Form& form) {
    if (++depth == 1) {
      inner = askTaskIdSuggestion(connect, {});
      form.close();
    } else {
      control(form, "BtnOK").click();
    }
  };
  EXPECT_FALSE(askTaskIdSuggestion(connect, {}));
  EXPECT_TRUE(inner);
}

TEST_F(Dialogs, DisconnectingWhileADialogIsOpenIsHarmless) {
  platform.onForm = [&](Form& form) {
    connect.AddinInstance_OnDisconnection();
    control(form, "BtnOK").click();
  };
  EXPECT_TRUE(askTaskIdSuggestion(connect, {}));
  EXPECT_EQ(connect.taskIdSuggestion, nullptr);
}

TEST_F(Dialogs, CopiedTasksAnswerIsStoredByOkOnly) {
  frmCopiedTaskIdSuggestion form(connect);
  form.open();
  EXPECT_EQ(control(form, "txtSuggestedTaskId").text(), "00") << "letters and number can't be read; no default is used";
  control(form, "OptionKeep").click();
  EXPECT_FALSE(control(form, "txtNextTaskNumber").enabled());
  control(form, "txtTaskIdLetter").type("B\"");
  control(form, "OptionKeep").pressKey(keys::escape);
  EXPECT_TRUE(form.refused());
  EXPECT_EQ(connect.strTaskIdLetters, "");
  EXPECT_FALSE(connect.flagKeepTaskIdNumbers);

  form.open();
  EXPECT_TRUE(control(form, "OptionNew").isOn());
  EXPECT_TRUE(control(form, "txtNextTaskNumber").enabled());
  EXPECT_EQ(control(form, "txtTaskIdLetter").text(), "");
  control(form, "txtTaskIdLetter").type("B\"");
  control(form, "txtNextTaskNumber").type("5");
  EXPECT_EQ(control(form, "txtSuggestedTaskId").text(), "B\"05");
  control(form, "OptionKeep").click();
  control(form, "BtnOK").click();
  EXPECT_FALSE(form.refused());
  EXPECT_FALSE(form.isOpen());
  EXPECT_TRUE(connect.flagKeepTaskIdNumbers);
  EXPECT_EQ(connect.strTaskIdLetters, "B\"");
  EXPECT_EQ(connect.iTaskIdNumber, 5);
}

}  // namespace
}  // namespace quorvel::addin
