// Time units and frequencies edited in the options dialog, and the changes in the drawing.
#include <gtest/gtest.h>

#include "commands/quorvel_options.h"
#include "stories/map_fixture.h"

namespace quorvel {
namespace {

class Options : public MapTest {
 protected:
  using Texts = std::vector<std::string>;
  Page page;
  Shape task;
  Texts messages;
  std::vector<MessageAnswer> answers;  ///< to the messages in turn; Ok when they run out

  void SetUp() override {
    MapTest::SetUp();
    page = newMap("AB Order entry");
    task = dropTask(page);
    ASSERT_TRUE(task) << lastRefusal();
    session.platform().onMessage = [this](const MessageBox& box) {
      EXPECT_EQ(box.title, "Quorvel");
      messages.push_back(box.text);
      return messages.size() <= answers.size() ? answers[messages.size() - 1] : MessageAnswer::Ok;
    };
  }

  void options(const std::function<void(Form&)>& act) {
    messages.clear();
    session.platform().onForm = [&](Form& form) {
      ASSERT_EQ(form.caption(), "Quorvel Options");
      act(form);
    };
    addin::cbrQuorvelOption_Click(session.addin());
  }
  static std::string box(Form& form, const std::string& name) { return form.find(name)->text(); }
  static void type(Form& form, const std::string& name, const std::string& typed) {
    EXPECT_TRUE(form.find(name)->type(typed)) << name;
  }
  static void click(Form& form, const std::string& name) { EXPECT_TRUE(form.find(name)->click()) << name; }

  static void set(const Shape& shape, const std::string& cell, const std::string& value) {
    EXPECT_TRUE(shape.Cells(cell).FormulaForce("\"" + value + "\"")) << cell;
  }
  static void setTime(const Shape& shape, const std::string& time, const std::string& unit) {
    set(shape, "Prop.Time_Units", unit);
    EXPECT_TRUE(
        shape.Cells(shape.OneD() == true ? "Prop.Time_Between_Tasks" : "Prop.Task_Completion_Time").FormulaForce(time));
  }
  /// The texts of the two labels in a Task's band, one after the other: "WK:2h".
  static std::string band(const Shape& task) {
    std::string frequency, time;
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data2() == "Frequency_Of_Occurrence") frequency += member.Text().or_("(none)");
      if (member.Data2() == "Task_Completion_Time") time += member.Text().or_("(none)");
    }
    return frequency + time;
  }
  std::string documentText(const char* cell) { return text(map.DocumentSheet(), cell); }
};

TEST_F(Options, AnotherAbbreviationOfMinutesIsShownByEveryTaskAndLink) {
  const Shape hours = dropTask(page, 6), link = drop(page, "Task Link", 4, 3);
  const Page next = map.Pages().Add();
  const Shape elsewhere = dropTask(next), linkElsewhere = drop(next, "Task Link", 4, 3);
  app.ActiveWindow().SetPage(page);
  for (const Shape& each : {link, linkElsewhere}) each.Cells("User.TaskLink_Visible").SetResult(0, 1.0);
  setTime(task, "5", "Minutes");
  setTime(hours, "2", "Hours");
  setTime(link, "1.5", "Minutes");
  app.ActiveWindow().SetPage(next);
  setTime(elsewhere, "90", "Minutes");
  setTime(linkElsewhere, "3", "Hours");
  app.ActiveWindow().SetPage(page);
  EXPECT_EQ(band(task) + band(hours) + band(elsewhere), "5m2h90m");
  EXPECT_EQ(link.Text(), "Task Link (1.5m)");

  options([&](Form& form) {
    EXPECT_EQ(box(form, "Text1(1)"), "m");
    EXPECT_TRUE(form.find("Option1(1)")->isOn());
    type(form, "Text1(1)", "min");
    EXPECT_EQ(box(form, "Text1(1)"), "mi") << "the box takes two characters";
    click(form, "Option1(2)");
    EXPECT_FALSE(form.find("Option1(1)")->isOn());
    click(form, "btnApplyAndClose");
    EXPECT_FALSE(form.isOpen());
  });
  EXPECT_EQ(messages, Texts{});
  EXPECT_EQ(documentText("User.Time_Unit_Disply"), ";s;mi;h;d;w");
  EXPECT_EQ(band(task) + band(hours) + band(elsewhere), "5mi2h90mi");
  EXPECT_EQ(link.Text(), "Task Link (1.5mi)");
  EXPECT_EQ(linkElsewhere.Text(), "Task Link (3h)");
  EXPECT_EQ(text(task, "Prop.Time_Units"), "Minutes") << "another default is for new shapes";
  EXPECT_EQ(text(dropTask(page, 2, 2), "Prop.Time_Units"), "Hours");

  app.Undo();
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(band(task), "5m") << "applying is one step";
  EXPECT_EQ(link.Text(), "Task Link (1.5m)");
  EXPECT_EQ(documentText("User.Time_Unit.Prompt"), "Minutes");
}

// The boxes are joined to lists by ";": one inside a text would shift all later entries.
TEST_F(Options, NoBoxAcceptsASemicolon) {
  const std::string descriptions = documentText("User.FreqSuggestions");
  options([&](Form& form) {
    const struct {
      const char *name, *typed, *stays;
    } boxes[] = {
        {"Text1(1)", "m;", "m"}, {"Text2(5)", ";W", "W"}, {"Text2(13)", "L;", "L"}, {"Text3(0)", "Le;ap;", "Leap"}};
    for (const auto& each : boxes) {
      Control& box = *form.find(each.name);
      box.type("");
      EXPECT_FALSE(box.pressKey(';')) << each.name;
      EXPECT_TRUE(box.pressKey('x')) << each.name;
      EXPECT_EQ(box.text(), "x") << each.name;
      box.type(each.typed);
      EXPECT_EQ(box.text(), each.stays) << each.name;
      box.setText(std::string(";") + each.stays + ";;");
      EXPECT_EQ(box.text(), each.stays) << each.name;
    }
    click(form, "btnApplyAndClose");
  });
  EXPECT_EQ(messages, Texts{});
  EXPECT_EQ(documentText("User.FreqSuggestions"), descriptions + ";Leap");
  EXPECT_EQ(documentText("User.FreqSuggestions.Prompt"), ";AD;IN;RE;HR;DY;W;BW;MO;SM;QR;SA;YR;BI;L;");
  EXPECT_EQ(documentText("User.Time_Unit_Disply"), ";s;m;h;d;w");
}

TEST_F(Options, MarksInAnAbbreviationShowAsTheyAre) {
  const Shape link = drop(page, "Task Link", 4, 3);
  link.Cells("User.TaskLink_Visible").SetResult(0, 1.0);
  setTime(task, "5", "Minutes");
  setTime(link, "3", "Minutes");
  for (const std::string mark : {"'", "\"", "\"'"}) {
    options([&](Form& form) {
      type(form, "Text1(1)", mark);
      click(form, "btnApplyAndClose");
    });
    EXPECT_EQ(band(task), "5" + mark);
    EXPECT_EQ(link.Text(), "Task Link (3" + mark + ")");
    options([&](Form& form) { EXPECT_EQ(box(form, "Text1(1)"), mark); });
  }
}

TEST_F(Options, AUsersFrequencyIsAddedUsedAndDeleted) {
  const Shape other = dropTask(page, 6);
  setTime(task, "2", "Hours");
  const std::string system = documentText("User.FreqSuggestions"),
                    abbreviations = ";AD;IN;RE;HR;DY;WK;BW;MO;SM;QR;SA;YR;BI;";
  options([&](Form& form) {
    EXPECT_EQ(form.find("Label3(12)")->caption(), "Biennial (every two years)");
    EXPECT_EQ(box(form, "Text2(12)"), "BI");
    type(form, "Text3(0)", "Every \"full\" moon");
    type(form, "Text2(13)", "FM");
    type(form, "Text3(1)", "Twice a day");
    click(form, "btnApply");
    EXPECT_EQ(messages, Texts{"Enter the frequency abbreviation for Twice a day"});
    EXPECT_EQ(documentText("User.FreqSuggestions"), system) << "nothing is stored before all boxes are filled";
    type(form, "Text2(14)", "TD");
    type(form, "Text2(25)", "XX");  // an abbreviation alone is no frequency
    click(form, "btnApply");
    EXPECT_TRUE(form.isOpen());
    click(form, "btnCancel");
    EXPECT_FALSE(form.isOpen()) << "after Apply there is no change to ask about";
  });
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(documentText("User.FreqSuggestions"), system + ";Every \"full\" moon;Twice a day");
  EXPECT_EQ(documentText("User.FreqSuggestions.Prompt"), abbreviations + "FM;TD;");
  EXPECT_EQ(text(task, "Prop.Frequency_Of_Occurrence.Format"), documentText("User.FreqSuggestions"));

  ASSERT_TRUE(task.Cells("Prop.Frequency_Of_Occurrence").FormulaForce("INDEX(14,Prop.Frequency_Of_Occurrence.Format)"));
  EXPECT_EQ(text(task, "Prop.Frequency_Of_Occurrence"), "Every \"full\" moon");
  EXPECT_EQ(band(task), "FM:2h");
  set(other, "Prop.Frequency_Of_Occurrence", "Twice a day");
  EXPECT_EQ(band(other), "TD");

  // A confirmed abbreviation changes its Tasks.
  answers = {MessageAnswer::Yes};
  options([&](Form& form) {
    type(form, "Text2(14)", "2D");
    click(form, "btnApplyAndClose");
  });
  EXPECT_EQ(messages, Texts{"This frequency is in use . Are you sure you want to change it in all tasks? "});
  EXPECT_EQ(band(other), "2D");

  answers.assign(2, MessageAnswer::Yes);
  options([&](Form& form) {
    type(form, "Text2(13)", "");
    type(form, "Text3(0)", "");
    click(form, "btnApplyAndClose");
  });
  EXPECT_EQ(messages, (Texts{"This frequency is in use . Are you sure you want to change it in all tasks? ",
                             "This frequency is in use. Are you sure you want to change it in all tasks??"}));
  EXPECT_EQ(documentText("User.FreqSuggestions"), system + ";Twice a day");
  EXPECT_EQ(documentText("User.FreqSuggestions.Prompt"), abbreviations + "2D;");
  EXPECT_EQ(text(other, "Prop.Frequency_Of_Occurrence.Format"), system + ";Twice a day");
  EXPECT_EQ(band(other), "2D");
  EXPECT_EQ(text(task, "Prop.Frequency_Of_Occurrence"), "Every \"full\" moon") << "its Task keeps what it had";
  options([&](Form& form) {
    EXPECT_EQ(box(form, "Text3(0)") + box(form, "Text2(13)"), "Twice a day2D") << "the rows have closed up";
    EXPECT_EQ(box(form, "Text3(1)") + box(form, "Text2(14)"), "");
  });
}

TEST_F(Options, DuplicatesAreRefusedWhenTheBoxIsLeft) {
  const struct {
    const char *name, *typed, *message;
    bool empties;
  } cases[] = {
      {"Text1(4)", "M ", "Duplicate time unit abbreviations are not permitted.", true},
      {"Text1(4)", "x", nullptr, false},
      {"Text2(0)", "wk", "Duplicate frequency abbreviations are not permitted.", true},
      {"Text2(20)", "WK", "Duplicate frequency abbreviations are not permitted.", true},
      {"Text2(20)", "W", nullptr, false},
      {"Text2(20)", "", nullptr, false},
      {"Text3(5)", " WEEKLY ", "Duplicate frequency descriptions are not permitted.", false},
      {"Text3(5)", "Fortnightly", nullptr, false},
      {"Text3(5)", "", nullptr, false},
  };
  for (const auto& c : cases) {
    options([&](Form& form) {
      type(form, c.name, c.typed);
      form.find("Option1(0)")->focus();
      EXPECT_EQ(box(form, c.name), c.empties ? "" : c.typed) << c.name << " " << c.typed;
      EXPECT_EQ(form.focused(), form.find(c.message ? c.name : "Option1(0)")) << c.name << " " << c.typed;
    });
    EXPECT_EQ(messages, c.message ? Texts{c.message} : Texts{}) << c.name << " " << c.typed;
  }
  // Two boxes with one text do not move the focus back and forth without end.
  options([&](Form& form) {
    type(form, "Text3(0)", "Fortnightly");
    type(form, "Text3(1)", "Fortnightly");
    form.find("Text3(0)")->focus();
    EXPECT_EQ(form.focused(), form.find("Text3(1)"));
  });
  EXPECT_EQ(messages.size(), 1u);
}

TEST_F(Options, ApplyAndOkRefuseMissingTextsWithTheirOwnMessages) {
  set(task, "Prop.Frequency_Of_Occurrence", "Weekly");
  const struct {
    const char *button, *emptied, *message;
  } cases[] = {
      {"btnApply", "Text1(3)", "Enter the time unit abbreviation for the Days"},
      {"btnApplyAndClose", "Text1(3)", "Enter the time unit abbreviation for Days"},
      {"btnApply", "Text2(2)", "Enter the frequency abbreviation for Recurring"},
      {"btnApplyAndClose", "Text2(2)", "Enter the frequency abbreviation for Recurring"},
  };
  for (const auto& c : cases) {
    options([&](Form& form) {
      type(form, c.emptied, "");
      click(form, c.button);
      EXPECT_TRUE(form.isOpen());
    });
    EXPECT_EQ(messages, Texts{c.message});
    EXPECT_EQ(documentText("User.FreqSuggestions.Prompt"), ";AD;IN;RE;HR;DY;WK;BW;MO;SM;QR;SA;YR;BI");
  }
  // A duplicate empties its box, which is then missing. Units are stored before a missing frequency is found.
  options([&](Form& form) {
    type(form, "Text1(4)", "m");
    click(form, "btnApply");
    EXPECT_EQ(messages.back(), "Enter the time unit abbreviation for the Weeks");
    type(form, "Text1(4)", "wk");
    type(form, "Text2(2)", "");
    click(form, "btnApply");
  });
  EXPECT_EQ(documentText("User.Time_Unit_Disply"), ";s;m;h;d;wk");
  EXPECT_EQ(band(task), "WK");
}

TEST_F(Options, AnswersOfNoRestoreTheOldText) {
  set(task, "Prop.Frequency_Of_Occurrence", "Weekly");
  options([&](Form& form) {
    type(form, "Text3(0)", "Fortnightly");
    type(form, "Text2(13)", "FN");
    click(form, "btnApplyAndClose");
  });
  const Shape other = dropTask(page, 6);
  set(other, "Prop.Frequency_Of_Occurrence", "Fortnightly");
  for (const MessageAnswer no : {MessageAnswer::No, MessageAnswer::Cancel}) {
    answers.assign(3, no);
    options([&](Form& form) {
      type(form, "Text2(5)", "WE");
      form.find("btnApply")->focus();
      EXPECT_EQ(box(form, "Text2(5)"), "WK");
      type(form, "Text3(0)", "Every fortnight");
      form.find("btnApply")->focus();
      EXPECT_EQ(box(form, "Text3(0)"), "Fortnightly");
      answers = {no, no, MessageAnswer::Ok, MessageAnswer::Yes};
      click(form, "btnApplyAndClose");
    });
    EXPECT_EQ(messages.size(), 2u);
    EXPECT_EQ(band(task), "WK");
    EXPECT_EQ(band(other), "FN");
  }
  // The question looks at two characters: an abbreviation of one character with a joint after it is not found.
  answers.clear();
  options([&](Form& form) {
    type(form, "Text2(5)", "W");
    answers = {MessageAnswer::Yes};
    click(form, "btnApplyAndClose");
  });
  setTime(task, "2", "Hours");
  EXPECT_EQ(band(task), "W:2h");
  options([&](Form& form) {
    type(form, "Text2(5)", "WY");
    click(form, "btnApplyAndClose");
  });
  EXPECT_EQ(messages, Texts{});
  EXPECT_EQ(band(task), "WY:2h");
}

TEST_F(Options, CancelAsksOnlyAboutChanges) {
  const std::string question = "Are you sure you want to cancel without saving the changes you have made?";
  options([&](Form& form) {
    click(form, "btnCancel");
    EXPECT_FALSE(form.isOpen());
  });
  EXPECT_EQ(messages, Texts{}) << "filling the boxes is no change";
  for (const char* changed : {"Text1(0)", "Text2(25)", "Text3(12)", "Option1(3)"}) {
    answers = {MessageAnswer::No, MessageAnswer::Yes};
    options([&](Form& form) {
      if (form.find(changed)->kind() == ControlKind::OptionButton) {
        click(form, changed);
      } else {
        type(form, changed, "zz");
      }
      click(form, "btnCancel");
      EXPECT_TRUE(form.isOpen());
      click(form, "btnCancel");
      EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(messages, (Texts{question, question})) << changed;
  }
  EXPECT_EQ(documentText("User.Time_Unit_Disply"), "s;m;h;d;w");
  EXPECT_EQ(documentText("User.Time_Unit.Prompt"), "Minutes");
}

}  // namespace
}  // namespace quorvel
