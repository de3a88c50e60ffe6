// The three display commands with their dialogs: the questions, the shapes that they change, and what is visible
// afterwards.
#include <gtest/gtest.h>

#include "commands/task_display.h"
#include "commands/task_display_options.h"
#include "commands/task_link_display_options.h"
#include "dialogs/frm_task_link_display.h"
#include "stories/details_fixture.h"

namespace quorvel {
namespace {

class DisplayCommands : public DetailsTest {
 protected:
  Shape second, elsewhere;
  Page nextPage, background;

  void SetUp() override {
    DetailsTest::SetUp();
    second = dropTask(page, 6);
    nextPage = map.Pages().Add();
    elsewhere = dropTask(nextPage);
    for (const Shape& each : {task, second, elsewhere}) {
      write(each, "Prop.Resources", "Order form");
      write(each, "Prop.Guidelines", "Ask first");
    }
    background = map.Pages().Add();
    ASSERT_TRUE(background.SetBackground(true));
    show(page);
  }

  void show(const Page& shown) { ASSERT_TRUE(app.ActiveWindow().SetPage(shown)); }
  void select(std::initializer_list<Shape> shapes) {
    app.ActiveWindow().DeselectAll();
    for (const Shape& shape : shapes) app.ActiveWindow().Select(shape, visio::select);
  }
  /// The next dialog is passed to `fill`; if it leaves it open, the close box closes it.
  void answerWith(std::function<void(Form&)> fill) {
    forms = 0;
    session.platform().onForm = [this, fill = std::move(fill)](Form& form) {
      ++forms;
      fill(form);
    };
  }
  int forms = 0;

  /// What `shape` shows, in the order of `column`.
  static std::string shows(const Shape& shape) {
    std::string rows;
    for (const std::string& row : column(shape)) rows += row.substr(0, row.find(':')) + " ";
    return rows;
  }
};

TEST_F(DisplayCommands, ResourcesAreHiddenForASelectionAPageAndTheDrawing) {
  const std::string both = "controls1 Resources1 ", guidelinesOnly = "controls1 ";
  const auto hideResources = [&](const char* scope) {
    answerWith([scope](Form& form) {
      EXPECT_EQ(form.caption(), "Task Display Options");
      form.find("chkResources")->setState(CheckState::Off);
      EXPECT_TRUE(form.find(scope)->click()) << scope;
      form.find("BtnOK")->click();
    });
    addin::cbrBtnTaskDisplayOption_Click(session.addin());
    EXPECT_EQ(forms, 1);
  };
  select({second});
  hideResources("OptionSelected");
  EXPECT_EQ(shows(task), both);
  EXPECT_EQ(shows(second), guidelinesOnly);
  EXPECT_EQ(number(page.PageSheet(), "User.Resources"), 1) << "a selection never changes the page";

  // The two differ now: their box is grey, and OK on a grey box turns it on for both.
  select({task, second});
  answerWith([](Form& form) {
    EXPECT_EQ(form.find("chkResources")->state(), CheckState::Grey);
    EXPECT_EQ(form.find("chkGuidelines")->state(), CheckState::On);
    EXPECT_TRUE(form.find("OptionSelected")->isOn());
    form.find("BtnOK")->click();
  });
  addin::cbrBtnTaskDisplayOption_Click(session.addin());
  EXPECT_EQ(shows(task) + shows(second), both + both);

  select({});
  hideResources("OptionPage");
  EXPECT_EQ(shows(task) + shows(second), guidelinesOnly + guidelinesOnly);
  EXPECT_EQ(shows(elsewhere), both);
  EXPECT_EQ(number(page.PageSheet(), "User.Resources"), 0);
  EXPECT_EQ(number(nextPage.PageSheet(), "User.Resources"), 1);
  const Shape next = dropTask(page, 9);
  write(next, "Prop.Resources", "Order form");
  EXPECT_EQ(shows(next), "") << "new Tasks follow their page";

  select({});
  hideResources("OptionDrawing");
  EXPECT_EQ(shows(elsewhere), guidelinesOnly);
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(shows(elsewhere), both) << "a command is one step";
}

TEST_F(DisplayCommands, OptionsCanBeCancelled) {
  // Without a selection there is no "Selected"; an untouched dialog is cancelled without a question.
  select({});
  answerWith([](Form& form) {
    EXPECT_FALSE(form.find("OptionSelected")->enabled());
    EXPECT_TRUE(form.find("OptionPage")->isOn());
    form.find("BtnCancel")->click();
    EXPECT_FALSE(form.isOpen());
  });
  addin::cbrBtnTaskDisplayOption_Click(session.addin());
  EXPECT_TRUE(session.platform().asked.empty() ||
              session.platform().asked.back().kind != HeadlessPlatform::Asked::Kind::Message);

  // After a change it asks; No goes back to the dialog, and the close box never asks.
  MessageAnswer reply = MessageAnswer::No;
  session.platform().onMessage = [&](const MessageBox& box) {
    EXPECT_EQ(box.text, "Are you sure you want to cancel without saving the changes you have made?");
    EXPECT_EQ(box.title, "Quorvel");
    return reply;
  };
  answerWith([&](Form& form) {
    form.find("chkGuidelines")->click();
    form.find("BtnCancel")->click();
    EXPECT_TRUE(form.isOpen());
    reply = MessageAnswer::Yes;
    form.find("BtnCancel")->click();
    EXPECT_FALSE(form.isOpen());
  });
  addin::cbrBtnTaskDisplayOption_Click(session.addin());
  answerWith([](Form& form) { form.find("chkGuidelines")->click(); });
  addin::cbrBtnTaskDisplayOption_Click(session.addin());
  EXPECT_EQ(shows(task), "controls1 Resources1 ");
  EXPECT_EQ(number(task, "User.controls"), 1);

  show(background);
  addin::cbrBtnTaskDisplayOption_Click(session.addin());
  addin::cbrBtnTaskdisplay_Click(session.addin());
  addin::cbrBtnTaskLinkDisplayOption_Click(session.addin());
  EXPECT_EQ(forms, 1) << "refused on a background page";
}

TEST_F(DisplayCommands, DetailsAreTurnedOffAndOnByTheirLayer) {
  const auto turn = [&](const char* caption, const char* frame, const char* scope) {
    answerWith([=](Form& form) {
      EXPECT_EQ(form.caption(), caption);
      EXPECT_EQ(form.find("fraScope")->caption(), frame);
      EXPECT_TRUE(form.find(scope)->click());
      form.find("BtnOK")->click();
    });
    addin::cbrBtnTaskdisplay_Click(session.addin());
  };
  write("Prop.Responsible_Role", "Clerk");
  select({task});
  turn("Task Display OFF", "Turn display of detailed Task data OFF for", "OptionSelected");
  for (const Shape& member : task.Shapes().all()) {
    EXPECT_EQ(layers(member), member.Data1() == "Pline" ? "InvisibleLayer" : "");
  }
  EXPECT_EQ(layers(line(second, "controls1")), "VisibleLayer");
  EXPECT_EQ(page.Layers().Item("InvisibleLayer").CellsC(visio::columnLayerVisible).Result(0), 0);
  EXPECT_EQ(number(task, "User.Task_Visible"), 0);
  EXPECT_EQ(number(task, "User.Resources"), 1) << "it keeps its switches";
  EXPECT_EQ(number(page.PageSheet(), "User.Task_Visible"), 1);
  // What is drawn meanwhile stays hidden as well.
  write("Prop.Guidelines", "Ask first;Sign");
  EXPECT_EQ(shows(task), "controls1 controls2 Resources1 ");
  EXPECT_EQ(layers(line("controls2")), "InvisibleLayer");

  // The state of the Task selected last is switched, and all get it.
  select({second, task});
  turn("Task Display ON", "Turn display of detailed Task data ON for ", "OptionSelected");
  EXPECT_EQ(layers(line("controls2")), "VisibleLayer");
  EXPECT_EQ(number(second, "User.Task_Visible"), 1);

  select({});
  turn("Task Display OFF", "Turn display of detailed Task data OFF for", "OptionDrawing");
  EXPECT_EQ(layers(line(elsewhere, "controls1")), "InvisibleLayer") << "of its own page";
  EXPECT_EQ(nextPage.Layers().Item("InvisibleLayer").Name(), "InvisibleLayer");
  EXPECT_EQ(number(nextPage.PageSheet(), "User.Task_Visible"), 0);
  turn("Task Display ON", "Turn display of detailed Task data ON for ", "OptionDrawing");
  EXPECT_EQ(layers(line(elsewhere, "controls1")), "VisibleLayer");

  // A page that has lost the layer gets it back when details are hidden, and it does not show.
  ASSERT_TRUE(page.PageSheet().DeleteSection(241)) << lastRefusal();  // the section of layers
  ASSERT_FALSE(page.Layers().Item("InvisibleLayer"));
  turn("Task Display OFF", "Turn display of detailed Task data OFF for", "OptionPage");
  EXPECT_EQ(layers(line("controls2")), "InvisibleLayer");
  EXPECT_EQ(page.Layers().Item("InvisibleLayer").CellsC(visio::columnLayerVisible).Result(0), 0);
}

TEST_F(DisplayCommands, LinksShowTheirTimeAndDescriptionAsChosen) {
  const Shape link = drop(page, "Task Link", 3, 3), other = drop(page, "Task Link", 6, 3);
  for (const Shape& each : {link, other}) {
    write(each, "Prop.Task_Link", "Send form");
    ASSERT_TRUE(each.Cells("Prop.Time_Between_Tasks").SetFormula("1.5"));
  }
  select({link});
  answerWith([](Form& form) {
    EXPECT_EQ(form.caption(), "Task Link Display Option");
    Control& time = *form.find("chkTimeBetweenTasks");
    Control& onlyAboveZero = *form.find("chkGreaterThanZero");
    EXPECT_FALSE(onlyAboveZero.enabled()) << "no time is shown yet";
    time.click();
    EXPECT_TRUE(onlyAboveZero.click());
    time.click();
    EXPECT_FALSE(onlyAboveZero.enabled() || onlyAboveZero.isOn()) << "unchecking clears it";
    time.click();
    onlyAboveZero.click();
    form.find("BtnOK")->click();
  });
  addin::cbrBtnTaskLinkDisplayOption_Click(session.addin());
  EXPECT_EQ(link.Text(), "Send form (1.5m)");
  EXPECT_EQ(other.Text().or_({}).find('('), std::string::npos);
  EXPECT_EQ(addin::commonTaskLinkSwitch(addin::shownNow(session.addin()), "User.TaskLink_Visible"), 1);

  // The time is shown only while it has a number.
  ASSERT_TRUE(link.Cells("Prop.Time_Between_Tasks").SetFormula("0"));
  EXPECT_EQ(link.Text().or_({}).find('('), std::string::npos);
  ASSERT_TRUE(link.Cells("Prop.Time_Between_Tasks").SetFormula("2"));
  EXPECT_EQ(link.Text(), "Send form (2m)");

  select({link, other});
  EXPECT_EQ(addin::commonTaskLinkSwitch(addin::shownNow(session.addin()), "User.TaskLink_Visible"), 2);
  addin::applyTaskLinkDisplayOptions(session.addin(), addin::shownNow(session.addin()), {1, 0, 0}, "Drawing");
  EXPECT_EQ(other.Text(), " (2m)") << "the comma in place of a decimal point is a thousands separator";
  EXPECT_EQ(number(page.PageSheet(), "User.TaskLink_txt_Visible"), 0);

  // Kept, but shown by no command.
  const addin::frmTaskLinkDisplay kept;
  EXPECT_EQ(kept.caption(), "Task Link Display ON");
  answerWith([](Form&) {});
  addin::cbrBtnTaskLinkDisplay_Click(session.addin());
  EXPECT_EQ(forms, 0);
}

}  // namespace
}  // namespace quorvel
