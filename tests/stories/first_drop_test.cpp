// The first map: what a user sees when Tasks are dropped on a page.
#include <gtest/gtest.h>

#include "session/session.h"

namespace quorvel {
namespace {

TEST(FirstDrop, AsksForLettersOnceAndNumbersOn) {
  SessionOptions options;
  options.installFolder = std::string(QUORVEL_SOURCE_FOLDER) + "/data";
  Session session(options);
  int asked = 0;
  std::string letters;
  session.platform().onForm = [&](Form& form) {
    ++asked;
    letters = form.find("txtTaskIdLetters")->text();
    form.find("txtTaskNumber")->type("1");
    form.find("BtnOK")->click();
  };
  const Document document = session.app().Documents().Add(session.templatePath());
  ASSERT_TRUE(document) << (session.host().refusals().empty() ? "" : session.host().refusals().back().reason);
  const Page page = document.Pages().Item(1);
  ASSERT_TRUE(page.SetName("AB Order entry"));
  const Document stencil = session.app().Documents().Open(session.stencilPath());
  ASSERT_TRUE(stencil);
  const Shape task = page.Drop(stencil.Masters().Item("Task"), 3, 6);
  for (const Refusal& refusal : session.host().refusals()) {
    std::printf("%s.%s: %s: %s\n", infoOf(refusal.member).objectName.data(), infoOf(refusal.member).memberName.data(),
                refusal.object.c_str(), refusal.reason.c_str());
  }
  ASSERT_TRUE(task);
  EXPECT_EQ(letters, "AB");
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(task.Cells("Prop.Task_ID").ResultStr(0), "AB01");
  EXPECT_EQ(task.Name(), "AB01");
  EXPECT_EQ(page.PageSheet().Cells("User.Next_Task_Id").Result(0), 2.0);
  const Shape second = page.Drop(stencil.Masters().Item("Task"), 6, 6);
  EXPECT_EQ(second.Cells("Prop.Task_ID").ResultStr(0), "AB02");
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(document.SaveAs("/tmp/first.vsdx"));
}

}  // namespace
}  // namespace quorvel
