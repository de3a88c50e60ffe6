// Hyperlinks of a drawing whose pages are renamed, and those of older drawings.
#include <gtest/gtest.h>

#include "hyperlinks/upgrade_links.h"
#include "stories/hyperlinks_fixture.h"

namespace quorvel {
namespace {

class LinkUpkeep : public HyperlinkTest {
 protected:
  static Hyperlink addLink(const Shape& shape, const std::string& address, const std::string& subAddress,
                           const std::string& description = {}) {
    const Hyperlink link = shape.AddHyperlink();
    EXPECT_TRUE(link.SetAddress(address) && link.SetSubAddress(subAddress) && link.SetDescription(description));
    return link;
  }
  static std::string linkOf(const Shape& shape, int index = 0) {
    const Hyperlink link = shape.Hyperlinks().Item(index);
    return link.Address().or_("(none)") + " | " + link.SubAddress().or_("(none)") + " | " +
           link.Description().or_("(none)");
  }
  static constexpr const char* question =
      "There are active hyperlinks to this page and you have changed the name of the page to \"";
};

TEST_F(LinkUpkeep, LinksFollowARenamedPage) {
  ASSERT_TRUE(task.Cells("Prop.Guidelines").SetFormula("\"first\""));
  const Shape line = memberMarked(task, "controls1");
  ASSERT_TRUE(line);
  addLink(task, "", "B Packing/B01", "B Packing/B01");
  addLink(task, "", "B%20Packing", "B Packing");
  addLink(task, "B Packing", "");
  addLink(line, "", "B Packing/B01", "my own words");
  addLink(box(task), "", "B Packing/B01");
  addLink(connector, "", "B Packing/B01");
  addLink(other, "", "A Orders/A01");
  // Another drawing's page, a bookmark, and this drawing by its own name.
  addLink(other, "sub/Other.vsdx", "B Packing/B01");
  addLink(other, "https://example.org", "B Packing");
  addLink(other, map.Name().or_({}), "B Packing/B01");
  const Shape far = dropTask(second);
  addLink(far, "", "B Packing");
  // A page of another map has the name too; its links are its own.
  const Document foreign = app.Documents().Add(session.templatePath());
  const Page foreignPage = foreign.Pages().Item(1);
  ASSERT_TRUE(foreignPage.SetName("F Foreign"));
  const Shape foreignTask = dropTask(foreignPage);
  addLink(foreignTask, "", "B Packing/B01");

  messages.clear();
  ASSERT_TRUE(second.SetName("B \"Ship & Pack\""));
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0],
            "A Quorvel page name cannot contain the following characters: /  ?  &  <  >. Please change the name of "
            "this page.");
  EXPECT_EQ(messages[1], std::string(question) +
                             "B \"Ship & Pack\"\". Would you like to update the hyperlinks with "
                             "the new page name?");
  EXPECT_EQ(linkOf(task), " | B \"Ship & Pack\"/B01 | B \"Ship & Pack\"/B01");
  EXPECT_EQ(linkOf(task, 1), " | B \"Ship & Pack\" | B \"Ship & Pack\"");
  EXPECT_EQ(linkOf(task, 2), "B \"Ship & Pack\" |  | ");
  EXPECT_EQ(linkOf(line), " | B \"Ship & Pack\"/B01 | my own words");
  EXPECT_EQ(linkOf(box(task)), " | B \"Ship & Pack\"/B01 | ");
  EXPECT_EQ(linkOf(connector), " | B \"Ship & Pack\"/B01 | ");
  EXPECT_EQ(linkOf(other), " | A Orders/A01 | ");
  EXPECT_EQ(linkOf(other, 1), "sub/Other.vsdx | B Packing/B01 | ");
  EXPECT_EQ(linkOf(other, 2), "https://example.org | B Packing | ");
  EXPECT_EQ(linkOf(other, 3), map.Name().or_({}) + " | B \"Ship & Pack\"/B01 | ");
  EXPECT_EQ(linkOf(far), " | B \"Ship & Pack\" | ");
  EXPECT_EQ(linkOf(foreignTask), " | B Packing/B01 | ");
  EXPECT_EQ(text(second.PageSheet(), "User.PAGE_NAME"), "B \"Ship & Pack\"");
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "B01");

  // The rename is one step with its links.
  ASSERT_TRUE(foreign.Close());
  ASSERT_TRUE(app.Undo());
  EXPECT_EQ(second.Name(), "B Packing");
  EXPECT_EQ(linkOf(task), " | B Packing/B01 | B Packing/B01");
  EXPECT_EQ(linkOf(task, 1), " | B%20Packing | B Packing");
  EXPECT_EQ(text(second.PageSheet(), "User.PAGE_NAME"), "B Packing");
}

TEST_F(LinkUpkeep, ANameThatCannotBeLinkedToIsLeftOut) {
  addLink(connector, "", "B Packing/B01");
  messages.clear();
  ASSERT_TRUE(second.SetName("In/Out"));
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "B01");
  ASSERT_TRUE(second.SetName("In and Out"));
  EXPECT_EQ(linkOf(connector), " | In and Out/B01 | ");
  EXPECT_EQ(text(connector, "Prop.Connecting_TaskID"), "B01");
}

TEST_F(LinkUpkeep, APageThatIsRenamedWhileItsLinksFollow) {
  addLink(task, "", "B Packing/B01");
  addLink(connector, "", "B Packing/B01");
  class Renamer : public ApplicationEvents {
   public:
    void CellChanged(Cell cell) override {
      if (!(cell.Name().or_({}).starts_with("Hyperlink.")) || done) return;
      done = true;
      EXPECT_TRUE(cell.Shape().Document().Pages().Item(2).SetName("B Third"));
    }
    bool done = false;
  } renamer;
  session.host().advise(renamer);
  ASSERT_TRUE(second.SetName("B Second"));
  session.host().unadvise(renamer);
  EXPECT_EQ(linkOf(task), " | B Third/B01 | ");
  EXPECT_EQ(linkOf(connector), " | B Third/B01 | ");
  EXPECT_EQ(text(second.PageSheet(), "User.PAGE_NAME"), "B Third");
}

TEST_F(LinkUpkeep, LinksThatAUserDoesNotUpdateAreForgotten) {
  addLink(task, "", "B Packing/B01");
  for (const MessageAnswer refusal : {MessageAnswer::No, MessageAnswer::Cancel}) {
    answers = {refusal};
    messages.clear();
    const std::string name = refusal == MessageAnswer::No ? "B1" : "B2";
    ASSERT_TRUE(second.SetName(name));
    EXPECT_EQ(messages.size(), refusal == MessageAnswer::No ? 1u : 0u) << "no later name finds the old one";
    EXPECT_EQ(linkOf(task), " | B Packing/B01 | ");
    EXPECT_EQ(text(second.PageSheet(), "User.PAGE_NAME"), name);
  }
  // A page that no map's page was ever: links within the drawing have an empty address, like its name.
  messages.clear();
  const Page background = map.Pages().Add();
  ASSERT_TRUE(background.SetBackground(true));
  ASSERT_TRUE(background.SetName("Back"));
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(linkOf(task), " | B Packing/B01 | ");
}

TEST_F(LinkUpkeep, LinksOfOlderDrawingsGetTheirRecords) {
  struct Case {
    const char *address, *subAddress, *after, *record;
  };
  for (const Case& each : {
           Case{"", "Page%201/T%3c1%3e", " | Page 1/T<1>", "Task+Rel++"},
           Case{"C:\\Maps\\Sub.vsd", "Page%201", "C:\\Maps\\Sub.vsd | Page 1", "Task+Rel+C:\\Maps\\+Sub.vsd"},
           Case{"../Sub.vsdx", "P%3C1", "../Sub.vsdx | P%3C1", "Task+Rel+../+Sub.vsdx"},
           Case{"C:\\Maps\\SUB.VSD", "P", "C:\\Maps\\SUB.VSD#P | ", "Document+Abs+C:\\Maps\\+SUB.VSD"},
           Case{"C:\\bin\\tool.EXE", "", "C:\\bin\\tool.EXE | ", "program+Abs+C:\\bin\\+tool.EXE"},
           Case{"MailTo:a@b.c", "", "MailTo:a@b.c | ", "Email"},
           Case{"https://example.org/x", "top", "https://example.org/x | top", "WebPage"},
           Case{"report.doc#Intro", "", "report.doc#Intro | ", "Document+Abs++report.doc"},
           Case{"C:\\a\\Ответ.XLS#t", "", "C:\\a\\Ответ.XLS#t | ", "Document+Abs+C:\\a\\+Ответ.XLS"},
           Case{"plan.txt", "top", "plan.txt#top | ", "Document+Abs++plan.txt"},
       }) {
    const Shape fresh = dropTask(page, 4, 4);
    const Hyperlink link = addLink(fresh, each.address, each.subAddress);
    addin::updateHyperLinkTask(fresh);
    EXPECT_EQ(link.Address().or_({}) + " | " + link.SubAddress().or_({}), each.after);
    EXPECT_EQ(link.Frame(), each.record) << each.address;
  }
}

TEST_F(LinkUpkeep, LinksOfOlderDrawingsThatHeldAPageAloneGetTheirTask) {
  ASSERT_TRUE(connector.Cells("Prop.Connecting_TaskID").SetFormula("\"B01\""));
  addLink(connector, "", "B Packing");
  addin::setSubAddress(connector, "Prop.Connecting_TaskID");
  EXPECT_EQ(linkOf(connector), " | B Packing/B01 | ");
  EXPECT_EQ(text(connector, "User.StoredTaskID"), "B01");
  addin::setSubAddress(connector, "Prop.Connecting_TaskID");
  EXPECT_EQ(linkOf(connector), " | B Packing/B01 | ") << "a second upgrade changes nothing";
  EXPECT_EQ(text(connector, "User.StoredTaskID"), "B01");

  ASSERT_TRUE(task.Cells("Prop.Linked").SetFormula("\"A02\""));
  addLink(box(task), "", "A Orders");
  addin::setSubAddress(box(task), "Prop.Other");
  EXPECT_EQ(linkOf(box(task)), " | A Orders | ");
  addin::setSubAddress(box(task), "Prop.Linked");
  EXPECT_EQ(linkOf(box(task)), " | A Orders/A02 | ");
  EXPECT_EQ(text(task, "Prop.Linked"), "A02");
}

}  // namespace
}  // namespace quorvel
