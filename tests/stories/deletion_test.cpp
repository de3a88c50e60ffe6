// Deleting Tasks that connectors and sub-task boxes link to: the question, what Yes removes, and the copy that No
// keeps.
#include <utility>

#include "host/store_dump.h"
#include "stories/details_fixture.h"

namespace quorvel {
namespace {

class Deletion : public DetailsTest {
 protected:
  Page nextPage;
  Shape second, third, owner;  ///< the Tasks AB02 and AB03, and one on the next page that links to others
  std::string targetPage = "AB Order entry";

  void SetUp() override {
    DetailsTest::SetUp();
    second = dropTask(page, 6);
    third = dropTask(page, 9);
    nextPage = map.Pages().Add();
    ASSERT_TRUE(nextPage.SetName("CD Details"));
    owner = dropTask(nextPage);
    ASSERT_TRUE(second && third && owner) << lastRefusal();
    lettersAsked.clear();
    answerDeletions("btnNo", false);
  }

  std::vector<std::string> questions;  ///< with "*" at the end when the box for all Tasks was offered
  void answerDeletions(const std::string& button, bool forAll) {
    questions.clear();
    session.platform().onForm = [=, this](Form& form) {
      ASSERT_EQ(form.name(), "frmProcessConnectorMsg");
      EXPECT_EQ(form.caption(), "Quorvel");
      Control& all = *form.find("chkapplytoAll");
      questions.push_back(form.find("Label1")->caption() + (all.visible() ? "*" : ""));
      EXPECT_FALSE(all.isOn()) << "the tick of an earlier question";
      if (forAll) all.click();
      if (!button.empty()) form.find(button)->click();
    };
  }

  static Hyperlink linkTo(const Shape& shape, const std::string& subAddress) {
    const Hyperlink link = shape.AddHyperlink();
    EXPECT_TRUE(link.SetSubAddress(subAddress));
    return link;
  }
  Shape connectorTo(const std::string& id, const Page& on) {
    const Shape connector = drop(on, "Process Connector", 5, 2);
    linkTo(connector, targetPage + "/" + id);
    connector.Cells("Prop.Connecting_TaskID").FormulaForce(quoted(id));
    return connector;
  }
  Shape connectorTo(const std::string& id) { return connectorTo(id, nextPage); }
  static Shape boxOf(const Shape& task) { return task.Shapes().Item(3); }
  static std::string targets(const Shape& shape) {
    std::string all;
    for (const Hyperlink& link : shape.Hyperlinks().all()) all += link.SubAddress().or_("?") + " ";
    return all;
  }
  static std::string shown(const Shape& connector) {
    return text(connector, "Prop.Connecting_TaskID") + " " + connector.Name().or_("?");
  }
  static Shape taskNamed(const Page& page, const std::string& name) { return page.Shapes().Item(name); }
  std::string dump() { return StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id}); }
  void expectUndoAndRedo(const std::string& before) {
    const std::string after = dump();
    ASSERT_TRUE(app.Undo());
    EXPECT_EQ(firstDifference(before, dump()), "");
    ASSERT_TRUE(app.Redo());
    EXPECT_EQ(firstDifference(after, dump()), "");
  }
  void select(std::initializer_list<Shape> shapes) {
    const Window window = app.ActiveWindow();
    window.SetPage(page);
    window.DeselectAll();
    for (const Shape& shape : shapes) window.Select(shape, visio::select);
  }
};

TEST_F(Deletion, NoPutsACopyInThePlaceOfTheTask) {
  write("Prop.Guidelines", "Ask first;Sign");
  write("Prop.Responsible_Role", "Clerk");
  std::string description = "Check the order";
  for (int i = 0; i < 12; ++i) description += ", then ask for what is missing";
  write("Prop.Task_Description", description);
  const Shape taskLink = drop(page, "Task Link", 4, 3);
  ASSERT_TRUE(taskLink.Cells("BeginX").GlueTo(task.Cells("Connections.X2")));
  ASSERT_TRUE(taskLink.Cells("EndX").GlueTo(second.Cells("Connections.X1")));
  const Shape connector = connectorTo("AB01");
  const std::string connectorBefore = shown(connector) + targets(connector);
  const std::vector<std::string> columnBefore = column();
  const double x = number(task, "PinX"), y = number(task, "PinY"), height = number(task, "Height"),
               next = number(page.PageSheet(), "User.Next_Task_Id");
  const std::string uniqueId = task.UniqueID(visio::uniqueIdGet).or_({});
  select({task});
  const std::string before = dump();

  ASSERT_TRUE(task.Delete()) << lastRefusal();
  EXPECT_EQ(questions, std::vector<std::string>{"There are active hyperlinks to Task AB01. Are you sure you want to "
                                                "delete this task?"});
  EXPECT_FALSE(task.ID());
  const Shape copy = taskNamed(page, "AB01");
  ASSERT_TRUE(copy);
  EXPECT_EQ(text(copy, "Prop.Task_ID"), "AB01");
  EXPECT_EQ(number(copy, "PinX"), x);
  EXPECT_EQ(number(copy, "PinY"), y);
  EXPECT_EQ(number(copy, "Height"), height);
  EXPECT_EQ(column(copy), columnBefore);
  EXPECT_EQ(textOf(tagged(copy, "Responsible_Role")), "Clerk");
  EXPECT_EQ(number(copy.Shapes().Item(4), "TextBkgnd"), 0) << "the copy is not selected";
  EXPECT_NE(copy.UniqueID(visio::uniqueIdGet).or_({}), "");
  EXPECT_NE(copy.UniqueID(visio::uniqueIdGet).or_({}), uniqueId);
  EXPECT_EQ(shown(connector) + targets(connector), connectorBefore);
  EXPECT_EQ(taskLink.Connects().Item(1).ToSheet(), copy);
  EXPECT_EQ(number(page.PageSheet(), "User.Next_Task_Id"), next);
  EXPECT_FALSE(session.addin().flagRestoringTask);
  expectUndoAndRedo(before);

  // The next drop is an ordinary one, and the copy grows with its text as the Task did.
  EXPECT_EQ(text(dropTask(page, 12), "Prop.Task_ID"), "AB04");
  EXPECT_TRUE(lettersAsked.empty());
  write(taskNamed(page, "AB01"), "Prop.Task_Description", "Short");
  EXPECT_LT(number(taskNamed(page, "AB01"), "Height"), height);
}

TEST_F(Deletion, YesRemovesTheLinksToTheTask) {
  const Shape linked = connectorTo("AB01"), typed = connectorTo("AB01", page), other = connectorTo("AB02");
  linkTo(linked, targetPage + "/AB09");
  typed.Cells("Prop.Connecting_TaskID").FormulaForce(quoted("see below"));
  for (const char* id : {"/AB01", "/AB02", "/AB01"}) linkTo(boxOf(owner), targetPage + id);
  linkTo(owner, targetPage + "/AB01");
  write(owner, "Prop.Linked", "AB01");
  answerDeletions("btnYes", false);
  const std::string before = dump();

  ASSERT_TRUE(task.Delete()) << lastRefusal();
  EXPECT_EQ(questions.size(), 1u);
  EXPECT_FALSE(taskNamed(page, "AB01"));
  EXPECT_EQ(shown(linked), "AB09 Connector.AB09") << "only the first hyperlink is removed; the next one is followed";
  EXPECT_EQ(targets(linked), targetPage + "/AB09 ");
  EXPECT_EQ(shown(typed), "Z99 Connector.Z99");
  EXPECT_EQ(targets(typed) + typed.Text().or_({}), "Connector.Z99");
  EXPECT_EQ(targets(other), targetPage + "/AB02 ");
  EXPECT_EQ(targets(boxOf(owner)), targetPage + "/AB02 ");
  EXPECT_EQ(targets(owner), targetPage + "/AB01 ") << "a Task's own hyperlinks are not looked at";
  EXPECT_EQ(text(owner, "Prop.Linked"), "AB02") << "the box follows the hyperlink that is left";
  expectUndoAndRedo(before);

  // With its last hyperlink the box loses its mark.
  ASSERT_TRUE(second.Delete());
  EXPECT_EQ(boxOf(owner).Hyperlinks().Count(), 0);
  EXPECT_EQ(text(owner, "Prop.Linked"), "AB02");
  EXPECT_EQ(number(owner, "User.flag_pic_3"), 0);
  for (const Shape& member : owner.Shapes().all()) EXPECT_NE(member.Data1(), "PicIndicateHypersubTAsk");

  // Nothing links to this one.
  questions.clear();
  ASSERT_TRUE(third.Delete());
  EXPECT_TRUE(questions.empty());
}

TEST_F(Deletion, SeveralTasksAreAskedAboutTogether) {
  const std::string several =
      "There are active hyperlinks to at least one of the Tasks you are trying to delete. Are you sure you want to "
      "delete these Tasks?*";
  struct Case {
    const char *what, *button;
    bool forAll;
    std::size_t asked;
    const char* left;  ///< Tasks on the page
  };
  for (const Case& each : {Case{"yes for all", "btnYes", true, 1, ""}, Case{"yes", "btnYes", false, 3, ""},
                           Case{"no for all asks again", "btnNo", true, 3, "AB01 AB02 AB03 "},
                           Case{"closed by its frame", "", true, 3, "AB01 AB02 AB03 "}}) {
    SCOPED_TRACE(each.what);
    std::vector<Shape> connectors;
    for (const char* id : {"AB01", "AB02", "AB03"}) connectors.push_back(connectorTo(id));
    linkTo(boxOf(owner), targetPage + "/AB02");
    answerDeletions(each.button, each.forAll);
    select({task, second, third});
    const std::string before = dump();
    ASSERT_TRUE(app.ActiveWindow().Selection().Delete());
    EXPECT_EQ(questions, std::vector<std::string>(each.asked, several));
    std::string left;
    for (const char* id : {"AB01", "AB02", "AB03"}) {
      if (taskNamed(page, id)) left += std::string(id) + " ";
    }
    EXPECT_EQ(left, each.left);
    for (const Shape& connector : connectors)
      EXPECT_EQ(connector.Hyperlinks().Count(), std::string(each.button) == "btnYes" ? 0 : 1);
    EXPECT_FALSE(session.addin().applyToAll);
    EXPECT_FALSE(session.addin().DeleteShape);
    const std::string after = dump();
    ASSERT_TRUE(app.Undo());
    EXPECT_EQ(firstDifference(before, dump()), "");
    for (const Shape& connector : connectors) ASSERT_TRUE(connector.Delete());
    boxOf(owner).DeleteSection(visio::sectionHyperlink);
  }

  // A script deletes a Task that is not among the selected ones.
  connectorTo("AB03");
  select({task, second});
  answerDeletions("btnYes", false);
  ASSERT_TRUE(third.Delete());
  ASSERT_EQ(questions.size(), 1u);
  EXPECT_NE(questions[0].find("to Task AB03."), std::string::npos);
}

TEST_F(Deletion, WhatIsNotAskedAbout) {
  connectorTo("AB01");
  linkTo(drop(nextPage, "Process Connector", 7, 2), targetPage);
  // A copy that was refused still has the ID of its original.
  session.addin().deletesRefusedShapes = true;
  const std::string before = dump();
  ASSERT_TRUE(task.Delete());
  session.addin().deletesRefusedShapes = false;
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
  // A link to the page alone names no Task, not even one without an ID.
  write("Prop.Task_ID", "");
  ASSERT_TRUE(task.Delete());
  ASSERT_TRUE(boxOf(second).Cells("LockDelete").FormulaForce("0"));
  boxOf(second).Delete();
  EXPECT_TRUE(questions.empty());
}

TEST_F(Deletion, TheDrawingOfTheTaskIsSearched) {
  const Shape firstTask = task, connector = connectorTo("AB01");
  session.platform().onForm = [](Form& form) { form.find("BtnOK")->click(); };
  const Page otherPage = newMap(targetPage);
  const Shape otherTask = dropTask(otherPage), otherConnector = drop(otherPage, "Process Connector");
  linkTo(otherConnector, targetPage + "/AB01");
  answerDeletions("btnYes", false);
  ASSERT_EQ(app.ActiveDocument(), map);
  ASSERT_TRUE(firstTask.Delete());
  EXPECT_EQ(questions.size(), 1u);
  EXPECT_EQ(shown(connector), "Z99 Connector.Z99");
  EXPECT_EQ(targets(otherConnector), targetPage + "/AB01 ");
  EXPECT_TRUE(otherTask.ID());
}

/// Deletes the shape that is about to be deleted, once.
struct ImpatientListener : ApplicationEvents {
  bool done = false;
  void BeforeShapeDelete(Shape shape) override {
    if (!std::exchange(done, true)) shape.Delete();
  }
};

TEST_F(Deletion, AHandlerThatDeletesTheTaskTooLeavesOneCopy) {
  connectorTo("AB01");
  ImpatientListener listener;
  session.host().advise(listener);
  task.Delete();
  session.host().unadvise(listener);
  EXPECT_TRUE(listener.done);
  int kept = 0;
  for (const Shape& shape : page.Shapes().all())
    kept += shape.CellExists("Prop.Task_ID", 0) == true && text(shape, "Prop.Task_ID") == "AB01";
  EXPECT_EQ(kept, 1);
}

}  // namespace
}  // namespace quorvel
