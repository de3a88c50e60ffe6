// Following hyperlinks: what is shown, what is handed to other programs, and what is refused without a trace.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "base/text.h"
#include "session/session.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

class FollowHyperlink : public testing::Test {
 protected:
  static SessionOptions options() {
    SessionOptions options;
    options.installFolder = QUORVEL_SOURCE_FOLDER "/data";
    options.connectAddin = false;
    return options;
  }

  Session session{options()};
  Application app = session.app();
  Document document;
  Page first, second;
  Shape box, member;
  std::vector<std::string> opened;
  MessageAnswer answer = MessageAnswer::No;
  bool canOpen = true;
  std::string folder = testing::TempDir() + "quorvel-follow-" + std::to_string(getpid()) + "/";

  void SetUp() override {
    fs::create_directories(folder + "sub/deep");
    for (const char* name : {"plan.doc", "100% #1.doc", "page.html", "a b.txt", "tool.exe", "plain", "sub/Plan.PDF",
                             "old.VSD", "orders.docm", "TWICE.txt", "twice.TXT"})
      std::ofstream(folder + name) << "x";
    fs::permissions(folder + "plain", fs::perms::owner_all);
    fs::create_symlink("tool.exe", folder + "harmless.txt");
    fs::create_symlink("nowhere", folder + "lost.txt");
    fs::create_directory_symlink("sub/deep", folder + "far");
    fs::create_symlink("sub/other map.vsdx", folder + "same.vsdx");
    std::ofstream(folder + "broken.vsdx") << "no drawing";
    const Document target = app.Documents().Add("");
    target.Pages().Item(1).SetName("There");
    target.Pages().Item(1).DrawRectangle(1, 1, 2, 2).SetName("B01");
    ASSERT_TRUE(target.SaveAs(folder + "sub/other map.vsdx"));
    target.Close();

    document = app.Documents().Add("");
    first = document.Pages().Item(1);
    const Page slashed = document.Pages().Add();
    slashed.SetName("In/Out");
    slashed.DrawRectangle(1, 1, 2, 2).SetName("C01");
    second = document.Pages().Add();
    second.SetName("Second part");
    second.DrawRectangle(3, 3, 4, 4).SetName("Member");
    second.DrawRectangle(1, 1, 2, 2);
    for (const Shape& shape : second.Shapes().all()) app.ActiveWindow().Select(shape, visio::select);
    member = app.ActiveWindow().Selection().Group().Shapes().Item("Member");
    box = second.DrawRectangle(1, 5, 2, 6);
    box.SetName("A01");
    ASSERT_TRUE(document.SaveAs(folder + "map.vsdx"));
    app.ActiveWindow().SetPage(first);

    session.platform().onMessage = [this](const MessageBox&) { return answer; };
    session.platform().onShellOpen = [this](std::string_view what) {
      if (canOpen) opened.emplace_back(what);
      return canOpen;
    };
  }
  void TearDown() override { fs::remove_all(folder); }

  std::string refusal() { return session.host().refusals().empty() ? "" : session.host().refusals().back().reason; }
  bool follow(const std::string& address, const std::string& place = {}, const std::string& extra = {},
              bool newWindow = false) {
    return document.FollowHyperlink(address, place, extra, {}, newWindow);
  }
  std::string shown() {
    const Window window = app.ActiveWindow();
    std::string text = window.Document().Name().or_("") + ":" + window.Page().Name().or_("");
    for (const Shape& shape : window.Selection().all()) text += "/" + shape.Name().or_("");
    return text;
  }
};

TEST_F(FollowHyperlink, WithinTheDrawing) {
  const struct {
    const char *place, *extra, *shown;
    double zoom;
  } cases[] = {
      {"Second part", "", "map.vsdx:Second part", -1},
      {"Page-1", "zoom=400", "map.vsdx:Page-1", 4},
      {"second PART/a01", "zoom=50", "map.vsdx:Second part/A01", 0.5},
      {"Second part/A01", "", "map.vsdx:Second part/A01", 0.5},
      {"in/out", "zoom=50", "map.vsdx:In/Out", 0.5},
      {"In/Out/C01", "", "map.vsdx:In/Out/C01", 0.5},
      {"Page-1", "zoom=-2", "map.vsdx:Page-1", -2},
      {"Page-1", "zoom=99999", "map.vsdx:Page-1", -2},
      {"Second part/Member", "zoom=-1", "map.vsdx:Second part", -1},
      {"", "zoom=100", "map.vsdx:Second part", 1},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(follow("", c.place, c.extra)) << c.place << refusal();
    EXPECT_EQ(shown().substr(0, std::string_view(c.shown).size()), c.shown);
    EXPECT_EQ(app.ActiveWindow().Zoom(), c.zoom) << c.place << " " << c.extra;
  }
  EXPECT_TRUE(document.Saved() == true);
  app.Undo();
  EXPECT_EQ(box.Name(), "Sheet." + std::to_string(box.ID().or_(0))) << "following made no step: the last one is undone";

  const int windows = app.Windows().Count().or_(0);
  for (const char* nowhere : {"Third", "Second part/A09", "/A01", "In/A01", "Page-1/A01"}) {
    const std::string before = shown();
    EXPECT_FALSE(follow("", nowhere, "zoom=200", true));
    EXPECT_EQ(shown(), before) << nowhere;
  }
  EXPECT_EQ(refusal(), "the page \"Page-1\" has no shape \"A01\"");
  EXPECT_FALSE(follow("", std::string(10'000, 'x')));
  EXPECT_LT(refusal().size(), 300u);
  EXPECT_EQ(app.Windows().Count(), windows);

  EXPECT_TRUE(follow("", "Page-1", "zoom=150", true));
  EXPECT_EQ(app.Windows().Count(), windows + 1);
  EXPECT_EQ(app.ActiveWindow().Zoom(), 1.5);
  EXPECT_EQ(app.Windows().Item(1).Zoom(), 1) << "the zoom belongs to the window";
  EXPECT_TRUE(app.ActiveWindow().Close());
  EXPECT_EQ(shown().substr(0, 20), "map.vsdx:Second part");
  EXPECT_TRUE(app.ActiveWindow().Close());
  EXPECT_FALSE(document.Pages()) << "the last window closes the document";
}

TEST_F(FollowHyperlink, ToAnotherDrawing) {
  const Shape holder = first.DrawRectangle(1, 1, 2, 2);
  const Hyperlink link = holder.AddHyperlink();
  link.SetAddress("sub\\other map.vsdx");
  link.SetSubAddress("There/B01");
  link.SetExtraInfo("zoom=75");
  link.SetNewWindow(true);
  EXPECT_TRUE(link.Follow()) << refusal();
  EXPECT_EQ(shown(), "other map.vsdx:There/B01");
  EXPECT_EQ(app.ActiveWindow().Zoom(), 0.75);
  EXPECT_EQ(app.Windows().Count(), 2) << "a drawing that was opened has a window of its own already";
  EXPECT_TRUE(app.ActiveDocument().Saved() == true);
  EXPECT_TRUE(link.Follow());
  EXPECT_EQ(app.Windows().Count(), 3);
  app.ActiveDocument().Close();

  for (const std::string& address :
       {folder + "sub/other map.vsdx", "file://" + folder + "sub/other%20map.vsdx",
        std::string("./sub/../sub/other map.vsdx"), std::string("same.vsdx"), std::string("Sub\\OTHER map.VSDX")}) {
    EXPECT_TRUE(follow(address, "There")) << address << refusal();
    EXPECT_EQ(shown(), "other map.vsdx:There");
    EXPECT_EQ(app.Documents().Count(), 2) << address;
  }
  app.ActiveDocument().Close();
  document.SetHyperlinkBase("sub");
  EXPECT_FALSE(document.Saved() == true);
  EXPECT_TRUE(follow("other map.vsdx")) << refusal();
  EXPECT_TRUE(app.ActiveDocument().Close());

  const struct {
    const char *address, *place, *reason;
  } refused[] = {
      {"sub/other map.vsdx", "", "other map.vsdx does not exist"},
      {"../sub/other map.vsdx", "Elsewhere", "has no page \"Elsewhere\""},
      {"../broken.vsdx", "", "broken.vsdx"},
      {"C:\\Maps\\x.vsd", "", "C:\\Maps\\x.vsd does not exist"},
      {"\\\\server\\maps\\x.vsd", "", "\\\\server\\maps\\x.vsd does not exist"},
  };
  for (const auto& c : refused) {
    EXPECT_FALSE(follow(c.address, c.place)) << c.address;
    EXPECT_NE(refusal().find(c.reason), std::string::npos) << refusal();
    EXPECT_EQ(app.Documents().Count(), 1) << c.address;
  }
  EXPECT_FALSE(app.Documents().Add("").FollowHyperlink("x.vsdx", ""));
  EXPECT_NE(refusal().find("never saved"), std::string::npos);
  EXPECT_EQ(opened.size(), 0u);
}

TEST_F(FollowHyperlink, OutOfTheDrawings) {
  const struct {
    const char *address, *place;
    std::string opened;  ///< empty: refused
  } cases[] = {
      {"https://example.org/a b", "mark", "https://example.org/a%20b#mark"},
      {"www.example.org", "", "http://www.example.org"},
      {"mailto:a@example.org", "", "mailto:a@example.org"},
      {"plan.doc", "", folder + "plan.doc"},
      {"plan.doc#Second part", "", folder + "plan.doc"},
      {"100% #1.doc", "", folder + "100% #1.doc"},
      {"100% #1.doc#mark", "", folder + "100% #1.doc"},
      {"page.html#second part", "", "file://" + folder + "page.html#second%20part"},
      {"page.html#a#b%20c", "", "file://" + folder + "page.html#a%23b%20c"},
      {"a%20b.txt", "", folder + "a b.txt"},
      {"far/../Plan.PDF", "", folder + "far/../Plan.PDF"},
      {"sub/../plan.doc", "", folder + "plan.doc"},
      {"old.VSD", "Page-1", folder + "old.VSD"},
      {"PLAN.doc#mark", "", folder + "plan.doc"},
      {"Twice.txt", "", ""},
      {"lost.txt", "", ""},
      {"plan.doc%00", "", ""},
      {"http:///x", "", ""},
      {"sub\\Plan.PDF", "", folder + "sub/Plan.PDF"},
      {"sub", "", folder + "sub"},
      {"missing.doc", "", ""},
      {"javascript:alert(1)", "", ""},
      {"some-handler:x", "", ""},
  };
  for (const auto& c : cases) {
    opened.clear();
    EXPECT_EQ(follow(c.address, c.place), !c.opened.empty()) << c.address << ": " << refusal();
    EXPECT_EQ(opened, c.opened.empty() ? std::vector<std::string>() : std::vector{c.opened}) << c.address;
  }
  EXPECT_EQ(session.platform().asked.back().kind, HeadlessPlatform::Asked::Kind::ShellOpen);

  const std::string turned = "\xE2\x80\xAEtool.exe";
  std::ofstream(folder + turned) << "x";
  for (const std::string& program : {std::string("tool.exe"), std::string("harmless.txt"), std::string("plain"),
                                     std::string("orders.docm"), turned}) {
    for (const MessageAnswer given : {MessageAnswer::No, MessageAnswer::Yes}) {
      opened.clear();
      answer = given;
      EXPECT_TRUE(follow(program)) << program << ": " << refusal();
      EXPECT_EQ(opened.size(), given == MessageAnswer::Yes ? 1u : 0u) << program;
      const auto& asked = session.platform().asked;
      EXPECT_EQ(asked[asked.size() - 1 - opened.size()].text, "The hyperlink starts the program \"" + folder +
                                                                  replaceAll(program, "\xE2\x80\xAE", "") +
                                                                  "\". Do you want to start it?");
    }
  }

  document.SetHyperlinkBase("https://example.org/widgets");
  opened.clear();
  EXPECT_TRUE(follow("../a b.htm", "x"));
  EXPECT_EQ(opened, std::vector<std::string>{"https://example.org/a%20b.htm#x"});
  canOpen = false;
  EXPECT_FALSE(follow("https://example.org/"));
  EXPECT_EQ(refusal(), "https://example.org/ could not be opened");
  document.SetHyperlinkBase("");
  const std::size_t before = session.platform().asked.size();
  EXPECT_FALSE(follow("page.html#x"));
  EXPECT_EQ(session.platform().asked.size(), before + 1) << "not once more without the bookmark";
}

}  // namespace
}  // namespace quorvel
