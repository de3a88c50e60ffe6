// Stories while the host refuses one call of the add-in's, each in turn.
#include <gtest/gtest.h>

#include "commands/customize_role_names.h"
#include "commands/quorvel_options.h"
#include "failure/story_sweep.h"

namespace quorvel {
namespace {

using Stage = StorySweep::Stage;

void answer(Form& form) {
  if (form.name() == "frmTaskIdSuggestion") form.find("BtnOK")->click();
  if (form.name() == "frmCustomizeRoleNames") {
    Control& roles = *form.find("lstRoleNames");
    for (std::size_t i = 0; i < roles.rows().size(); ++i) {
      if (roles.rows()[i].text() == "Clerk") roles.selectRow(i);
    }
    form.find("btnEdit")->click();
  }
  if (form.name() == "frmNewRoleName") {
    form.find("txtNewRoleName")->type("Bookkeeper");
    form.find("btnOK")->click();
  }
  if (form.name() == "frmTaskOption") {
    form.find("Text1(1)")->type("mi");
    form.find("Text2(5)")->type("WY");
    form.find("btnApplyAndClose")->click();
  }
}

// A new drawing and the first drops make about two thousand calls. Each of the first four hundred is refused, and
// after them every seventh, which includes every kind of call many times.
const StorySweep& firstMap() {
  static const StorySweep sweep(
      {},
      [](Stage& stage) {
        double x = 2;
        for (const char* master : {"Task", "Task Link", "Process Connector"}) {
          stage.page.Drop(stage.stencil.Masters().Item(master), x, 6);
          x += 3;
        }
      },
      answer);
  return sweep;
}
TEST(RefusedCall, TheFirstMapSurvivesEachOfTheFirst) { firstMap().refuseEach(1, 400, 1, 1000); }
TEST(RefusedCall, TheFirstMapSurvivesTheLaterOnes) { firstMap().refuseEach(401, StorySweep::toTheEnd, 7, 1000); }

/// A Task with a role in two rows, a frequency and a time, and a link with a time.
void prepareTaskAndLink(Stage& stage) {
  const Shape task = stage.page.Drop(stage.stencil.Masters().Item("Task"), 3, 6);
  const Shape link = stage.page.Drop(stage.stencil.Masters().Item("Task Link"), 6, 6);
  task.Cells("Prop.Responsible_Role").FormulaForce("\"Clerk\"");
  task.Cells("Prop.SupportingRole_2").FormulaForce("\"Clerk\"");
  task.Cells("Prop.Frequency_Of_Occurrence").FormulaForce("\"Weekly\"");
  task.Cells("Prop.Task_Completion_Time").FormulaForce("2");
  link.Cells("User.TaskLink_Visible").FormulaForce("1");
  link.Cells("Prop.Time_Between_Tasks").FormulaForce("2");
}

TEST(RefusedCall, RenamingARoleInUse) {
  const StorySweep sweep(
      prepareTaskAndLink, [](Stage& stage) { addin::cbrBtnCustomizeRoleName_Click(stage.connect); }, answer);
  sweep.refuseEach(1, 60, 1, 100);
  sweep.refuseEach(61, StorySweep::toTheEnd, 5, 100);
}

TEST(RefusedCall, ApplyingOptions) {
  const StorySweep sweep(
      prepareTaskAndLink, [](Stage& stage) { addin::cbrQuorvelOption_Click(stage.connect); }, answer);
  sweep.refuseEach(1, StorySweep::toTheEnd, 3, 100);
}

TEST(RefusedCall, TypingOverTextsAndReplacingThem) {
  const StorySweep sweep(
      [](Stage& stage) {
        prepareTaskAndLink(stage);
        stage.page.Shapes().Item("A01").Cells("Prop.Guidelines").FormulaForce("\"Form;the manual\"");
      },
      [](Stage& stage) {
        for (const Shape& member : stage.page.Shapes().Item("A01").Shapes().all()) {
          if (member.Data3() == "Responsible_Role" && member.BeginTextEdit()) member.EndTextEdit("typed");
        }
        stage.connect.flagFindReplaceActive = true;
        stage.running.replaceText("manual", "law");
        EXPECT_FALSE(stage.connect.flagFindReplaceActive);
      },
      answer);
  sweep.refuseEach(1, StorySweep::toTheEnd, 7, 100);
}

}  // namespace
}  // namespace quorvel
