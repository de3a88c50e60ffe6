// A cell of a Task or a Process Connector changes: hyperlinks, marks and derived cells follow.
#include <gtest/gtest.h>

#include "host/store_dump.h"
#include "stories/details_fixture.h"

namespace quorvel {
namespace {

class FollowedChanges : public DetailsTest {
 protected:
  static constexpr int subTaskBox = 3, descriptionBox = 4;

  static void link(const Shape& shape, const std::string& subAddress, const std::string& description = {}) {
    const Hyperlink made = shape.AddHyperlink();
    EXPECT_TRUE(made.SetDescription(description));
    EXPECT_TRUE(made.SetSubAddress(subAddress));
  }
  static std::string subAddress(const Shape& shape, int index = 0) {
    return shape.Hyperlinks().Item(index).SubAddress().or_("(none)");
  }
  static std::string description(const Shape& shape, int index = 0) {
    return shape.Hyperlinks().Item(index).Description().or_("(none)");
  }
  static int marksOf(const Shape& shape, const std::string& data1) {
    int count = 0;
    for (const Shape& member : shape.Shapes().all()) count += member.Data1() == data1;
    return count;
  }
  std::string dump() {
    app.ActiveWindow().DeselectAll();
    return StoreDump::of(session.engine().store(), host::DocumentId{map.ref().id});
  }
};

TEST_F(FollowedChanges, LinksFollowAChangedTaskIdAndTypedIdsStay) {
  ASSERT_EQ(text(task, "Prop.Task_ID"), "AB01");
  const Page elsewhere = map.Pages().Add();
  ASSERT_TRUE(elsewhere.SetName(std::string("CD Elsewhere")));
  const std::string target = "AB Order entry/AB01";
  const Shape connector = drop(elsewhere, "Process Connector"), typed = drop(elsewhere, "Process Connector", 3, 3),
              foreign = drop(elsewhere, "Process Connector", 3, 1);
  link(connector, target, target);
  link(typed, target, "see there");
  write(typed, "Prop.Connecting_TaskID", "mine");
  link(foreign, "AB Order entry", "the page");
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "AB01");
  EXPECT_EQ(connector.Name().or_({}), "Connector.AB01");
  EXPECT_EQ(text(foreign, "Prop.Connecting_TaskID"), "Z99");

  const Shape upper = dropTask(elsewhere, 6, 6);
  const Shape box = upper.Shapes().Item(subTaskBox);
  link(upper, "CD Elsewhere", "first");
  link(upper, target, target);
  link(box, target, target);
  EXPECT_EQ(text(upper, "Prop.Linked"), "AB01");
  EXPECT_EQ(box.Text().or_({}), "AB01");
  write(upper, "Prop.Guidelines", "rules");
  link(line(upper, "controls1"), target, "the rules, " + target);
  link(line(upper, "controls1"), "AB Order entry/AB02");

  const std::string before = dump();
  write("Prop.Task_ID", "AB05");
  const std::string now = "AB Order entry/AB05";
  EXPECT_EQ(task.Name().or_({}), "AB05");
  EXPECT_EQ(subAddress(connector), now);
  EXPECT_EQ(description(connector), now);
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "AB05");
  EXPECT_EQ(connector.Name().or_({}), "Connector.AB05");
  EXPECT_EQ(text(connector, "Char.Size[1]"), text(typed, "Char.Size[1]")) << "four letters take the largest size";
  EXPECT_EQ(subAddress(typed), now);
  EXPECT_EQ(description(typed), "see there");
  EXPECT_EQ(text(typed, "Prop.Connecting_TaskID"), "mine");
  EXPECT_EQ(text(typed, "User.StoredTaskID"), "AB05");
  EXPECT_EQ(subAddress(foreign), "AB Order entry");
  EXPECT_EQ(subAddress(upper, 1), now);
  EXPECT_EQ(description(upper, 1), target) << "the first hyperlink's description tells nothing of the address";
  EXPECT_EQ(subAddress(box), now);
  EXPECT_EQ(text(upper, "Prop.Linked"), "AB05");
  EXPECT_EQ(subAddress(line(upper, "controls1")), now);
  EXPECT_EQ(description(line(upper, "controls1")), now);
  EXPECT_EQ(subAddress(line(upper, "controls1"), 1), "AB Order entry/AB02");
  const std::string after = dump();
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(before, dump()), "");
  ASSERT_TRUE(app.Redo());
  EXPECT_EQ(firstDifference(after, dump()), "");

  // An emptied ID changes no link; the name keeps the last one.
  write("Prop.Task_ID", "");
  EXPECT_EQ(subAddress(connector), now);
  EXPECT_EQ(task.Name().or_({}), "AB05");
  write("Prop.Task_ID", "AB1234");
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "AB1234");
  EXPECT_EQ(subAddress(foreign), "AB Order entry");
  // An emptied ID of a connector is filled again.
  write(connector, "Prop.Connecting_TaskID", "");
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "AB1234");
  EXPECT_NEAR(connector.Cells("Char.Size[1]").Result(visio::unitsPoints).or_(0), 8, 1e-9);
}

TEST_F(FollowedChanges, MarksComeAndGoWithTheirReason) {
  write("Prop.Notes", "   ");
  EXPECT_EQ(marksOf(task, "pic_indicatesNotes"), 0);
  write("Prop.Notes", "ask first");
  write("Prop.Notes", "ask twice");
  ASSERT_EQ(marksOf(task, "pic_indicatesNotes"), 1);
  EXPECT_EQ(number(task, "User.flag_pic_2"), 1);
  const Shape notes = task.Shapes().Item(task.Shapes().Count().or_(0));
  EXPECT_EQ(text(notes, "Comment"), "ask twice");
  EXPECT_EQ(text(notes, "User.visEquivTitle"), "ask twice");
  EXPECT_NEAR(number(notes, "PinX"), number(task, "Width") - 0.0499, 1e-9);
  EXPECT_EQ(number(notes, "LockDelete"), 1);

  EXPECT_EQ(marksOf(task, "pic_indicatorTaskDescription"), 0);
  addLink(task, "http://example.org", "there");
  addLink(task, "http://example.com", "here");
  EXPECT_EQ(marksOf(task, "pic_indicatorTaskDescription"), 1);
  EXPECT_EQ(number(task, "User.flag_pic"), 1);

  const Shape other = dropTask(page, 6, 3);
  link(other, "AB Order entry/AB01");
  EXPECT_EQ(marksOf(other, "pic_indicatorTaskDescription"), 1) << "a link within the drawing has no address";

  const Shape box = task.Shapes().Item(subTaskBox);
  link(box, "CD Lower/CD01");
  ASSERT_EQ(marksOf(task, "PicIndicateHypersubTAsk"), 1);
  EXPECT_EQ(number(task, "User.flag_pic_3"), 1);
  const auto markPlace = [&] {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data1() == "PicIndicateHypersubTAsk") return number(member, "PinX");
    }
    return -1.0;
  };
  const auto expected = [&] {
    const double left = number(box, "PinX") + number(box, "Width") / 2;
    return left - number(box, "User.TxtWidth") - 0.1;
  };
  EXPECT_NEAR(markPlace(), expected(), 1e-9);
  const double before = markPlace();
  write("Prop.Linked", "CD0001");
  EXPECT_EQ(text(box, "User.StoredTaskID"), "CD01") << "a typed ID stays, and the stored one is the link's";
  EXPECT_NEAR(markPlace(), expected(), 1e-9);
  EXPECT_LT(markPlace(), before);

  // A link that is aimed at a page alone shows no ID, and stays.
  write("Prop.Linked", "CD01");
  EXPECT_TRUE(box.Hyperlinks().Item(0).SetSubAddress(std::string("CD Lower")));
  EXPECT_EQ(text(task, "Prop.Linked"), "");
  EXPECT_EQ(marksOf(task, "PicIndicateHypersubTAsk"), 1);
  EXPECT_TRUE(box.Hyperlinks().Item(0).SetSubAddress(std::string("CD Lower/CD02")));
  EXPECT_EQ(text(task, "Prop.Linked"), "CD02");

  const std::string whole = dump();
  write("Prop.Linked", " ");
  EXPECT_EQ(marksOf(task, "PicIndicateHypersubTAsk"), 0);
  EXPECT_EQ(number(task, "User.flag_pic_3"), 0);
  EXPECT_EQ(box.Hyperlinks().Count().or_(-1), 0);
  EXPECT_EQ(text(box, "User.StoredTaskID"), "");
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(firstDifference(whole, dump()), "");
}

TEST_F(FollowedChanges, ATaskShowsItsDescriptionAndStaysFilled) {
  const Shape box = task.Shapes().Item(descriptionBox);
  write("Prop.Task_Description", "Check the order");
  EXPECT_EQ(box.Text().or_({}), "Check the order");
  EXPECT_TRUE(box.CellExists("Fields.Value[1]", 0).or_(false)) << "the text is still a field";
  box.SetText("typed over");
  write("Prop.Task_Description", "Send it");
  EXPECT_EQ(box.Text().or_({}), "Send it");
  EXPECT_TRUE(box.CellExists("Fields.Value[1]", 0).or_(false));

  for (const char* colour : {"1", "4"}) {
    task.Cells("FillForegnd").SetFormula(std::string(colour));
    task.Cells("FillPattern").SetFormula(std::string("0"));
    EXPECT_EQ(number(task, "FillPattern"), 1) << "with colour " << colour;
    EXPECT_EQ(number(task, "FillForegnd"), 1);
  }
}

TEST_F(FollowedChanges, AConnectorFollowsItsFirstHyperlinkOnly) {
  const Shape connector = drop(page, "Process Connector");
  link(connector, "CD Lower/CD07");
  link(connector, "CD Lower/CD08");
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "CD07");
  EXPECT_EQ(text(connector, "User.StoredTaskID"), "CD07");
  // A link that is rewritten has no target for a moment.
  EXPECT_TRUE(connector.Hyperlinks().Item(0).SetSubAddress(std::string()));
  EXPECT_TRUE(connector.Hyperlinks().Item(0).SetSubAddress(std::string("CD Lower/CD09")));
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "CD09");
  write(connector, "Prop.Connecting_TaskID", "CD10");
  EXPECT_TRUE(connector.Hyperlinks().Item(0).SetSubAddress(std::string("CD Lower/CD11")));
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "CD10");
  EXPECT_EQ(text(connector, "User.StoredTaskID"), "CD11");
}

}  // namespace
}  // namespace quorvel
