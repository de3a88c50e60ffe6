// The services of this machine, and their results when no callback is set.
#include "headless/headless_platform.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace quorvel {
namespace {

namespace fs = std::filesystem;

class HeadlessPlatformTest : public testing::Test {
 protected:
  void SetUp() override {
    folder = fs::temp_directory_path() / ("quorvel-headless-" + std::to_string(::getpid()));
    fs::remove_all(folder);
  }
  void TearDown() override { fs::remove_all(folder); }

  fs::path folder;
};

TEST_F(HeadlessPlatformTest, OneProfileFileForAllSpellingsOfItsName) {
  HeadlessPlatform platform("/install", folder.string());
  EXPECT_EQ(platform.readProfile("Quorvel.ini", "Toolbar", "Position", "-1", 10), "-1");
  EXPECT_TRUE(platform.writeProfile("Quorvel.ini", "Toolbar", "Position", "123456789012"));
  EXPECT_TRUE(platform.writeProfile("Quorvel.INI", "Toolbar", "Top", "5"));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
  // The buffer's size counts an end mark.
  EXPECT_EQ(platform.readProfile("QUORVEL.INI", "Toolbar", "Position", "-1", 10), "123456789");
  EXPECT_EQ(platform.readProfile("Quorvel.ini", "Toolbar", "Top", "0", 10), "5");
}

class Question : public Form {
 public:
  Question() : Form("Question", "Question") {
    add(ControlKind::Button, "Stay").onClick = [] {};
  }
  bool refusesToClose = false;
  int unloaded = 0;

 protected:
  bool unloading() override {
    ++unloaded;
    return !refusesToClose;
  }
};

TEST_F(HeadlessPlatformTest, QuestionsWithoutCallbackAreRefused) {
  HeadlessPlatform platform("/install", folder.string());
  Question form;
  platform.showModal(form);
  EXPECT_FALSE(form.isOpen());
  EXPECT_EQ(form.unloaded, 1);
  form.refusesToClose = true;
  platform.onForm = [](Form& open) { open.find("stay")->click(); };
  platform.showModal(form);
  EXPECT_FALSE(form.isOpen());

  const struct {
    MessageButtons buttons;
    MessageAnswer answer;
  } cases[] = {{MessageButtons::Ok, MessageAnswer::Ok},
               {MessageButtons::YesNo, MessageAnswer::No},
               {MessageButtons::YesNoCancel, MessageAnswer::Cancel},
               {MessageButtons::OkCancel, MessageAnswer::Cancel}};
  for (const auto& c : cases) EXPECT_EQ(platform.showMessage({.text = "?", .buttons = c.buttons}), c.answer);
  EXPECT_FALSE(platform.chooseFile({.title = "Import", .filter = {}, .startFolder = {}}).has());
  EXPECT_EQ(platform.openBrowser({}), nullptr);
  EXPECT_EQ(platform.asked.size(), 8u);
  EXPECT_EQ(platform.asked.front().text, "Question");
}

TEST_F(HeadlessPlatformTest, FileDialogsOfferTheNewerFormsOfDrawings) {
  HeadlessPlatform platform("/install", folder.string());
  std::string shown;
  platform.onFileDialog = [&](const FileDialog& dialog) {
    shown = dialog.filter;
    return Maybe<std::string>();
  };
  const struct {
    const char* asked;
    const char* shown;
  } cases[] = {
      {"Drawing (*.vsd)|*.vsd", "Drawing (*.vsd;*.vsdx;*.vsdm;*.vdx)|*.vsd;*.vsdx;*.vsdm;*.vdx"},
      {"Drawing|*.vsd;*.vdx|Stencil|*.VSS", "Drawing|*.vsd;*.vsdx;*.vsdm;*.vdx|Stencil|*.VSS;*.vssx;*.vssm;*.vsx"},
      {"(*.vsd; *.vst)|*.vsd; *.vst",
       "(*.vsd;*.vsdx;*.vsdm;*.vdx; *.vst;*.vstx;*.vstm;*.vtx)|"
       "*.vsd;*.vsdx;*.vsdm;*.vdx; *.vst;*.vstx;*.vstm;*.vtx"},
      {"*.VDX; *.vsdx ;*.vsd", "*.VDX; *.vsdx ;*.vsd;*.vsdm"},
      {"All Files (*.*)|*.*|PDF (*.pdf)| *.pdf|", "All Files (*.*)|*.*|PDF (*.pdf)| *.pdf|"},
      {"", ""}};
  for (const auto& c : cases) {
    platform.chooseFile({.title = "Open", .filter = c.asked, .startFolder = {}});
    EXPECT_EQ(shown, c.shown);
  }
}

TEST_F(HeadlessPlatformTest, TheProcessKeepsItsCurrentFolder) {
  HeadlessPlatform platform("/install", folder.string());
  fs::create_directories(folder / "maps");
  std::ofstream(folder / "maps" / "b.txt") << "\xEF\xBB\xBFtext";
  std::ofstream(folder / "maps" / "a.txt");
  const fs::path before = fs::current_path();
  EXPECT_EQ(platform.currentFolder(), before.string());
  EXPECT_TRUE(platform.setCurrentFolder(folder.string()));
  EXPECT_FALSE(platform.setCurrentFolder((folder / "missing").string()));
  EXPECT_EQ(platform.currentFolder(), folder.string());
  EXPECT_EQ(fs::current_path(), before);

  EXPECT_EQ(*platform.filesIn((folder / "maps").string()), (std::vector<std::string>{"a.txt", "b.txt"}));
  EXPECT_FALSE(platform.filesIn((folder / "missing").string()).has());
  EXPECT_EQ(platform.readTextFile((folder / "maps" / "b.txt").string()).or_({}), "text");
  EXPECT_EQ(platform.readTextFile((folder / "maps" / "a.txt").string()).or_("failed"), "");
  EXPECT_FALSE(platform.readTextFile((folder / "maps").string()).has());
  EXPECT_TRUE(platform.createTextFile((folder / "maps" / "b.txt").string()));
  EXPECT_EQ(platform.readTextFile((folder / "maps" / "b.txt").string()).or_("failed"), "");
  EXPECT_FALSE(platform.createTextFile("c:\\b.txt"));
  EXPECT_FALSE(fs::exists("c:\\b.txt"));
}

}  // namespace
}  // namespace quorvel
