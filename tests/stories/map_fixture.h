// A session with the add-in connected and the stencil open, and a user who answers its dialogs.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "session/session.h"

namespace quorvel {

class MapTest : public testing::Test {
 protected:
  static SessionOptions options() {
    SessionOptions options;
    options.installFolder = QUORVEL_SOURCE_FOLDER "/data";
    options.configurationFolder = testing::TempDir() + "quorvel-stories";
    return options;
  }

  Session session{options()};
  Application app = session.app();
  Document stencil = app.Documents().Open(session.stencilPath());
  Document map;

  /// What the user types in the dialog of the first Task; `accept` false closes it.
  struct Answer {
    bool accept = true;
    std::string letters;  ///< empty: as suggested
    std::string number;   ///< empty: as suggested
  };
  Answer answer;
  std::vector<std::string> lettersAsked;

  void SetUp() override {
    ASSERT_TRUE(stencil) << lastRefusal();
    session.platform().onForm = [this](Form& form) {
      if (form.name() != "frmTaskIdSuggestion") return;
      lettersAsked.push_back(form.find("txtTaskIdLetters")->text());
      if (!answer.letters.empty()) form.find("txtTaskIdLetters")->type(answer.letters);
      if (!answer.number.empty()) form.find("txtTaskNumber")->type(answer.number);
      if (answer.accept) form.find("BtnOK")->click();
    };
  }

  /// A misspelt name of a cell or row is refused and skipped; without this no test would see it.
  void TearDown() override {
    if (asksForUnknownNames) return;
    for (const Refusal& refusal : session.host().refusals()) {
      if (refusal.isUnknownName)
        ADD_FAILURE() << infoOf(refusal.member).memberName << " on " << refusal.object << ": " << refusal.reason;
    }
  }
  /// A story that asks for cells which may not exist sets this.
  bool asksForUnknownNames = false;

  std::string lastRefusal() {
    const auto refusals = session.host().refusals();
    return refusals.empty() ? "nothing was refused" : refusals.back().object + ": " + refusals.back().reason;
  }

  /// A map from the template, its first page renamed where a name is given.
  Page newMap(const std::string& pageName = {}) {
    map = app.Documents().Add(session.templatePath());
    EXPECT_TRUE(map) << lastRefusal();
    const Page page = map.Pages().Item(1);
    if (!pageName.empty()) {
      EXPECT_TRUE(page.SetName(pageName)) << lastRefusal();
    }
    return page;
  }

  Shape drop(const Page& page, const char* master, double x = 3, double y = 6) {
    return page.Drop(stencil.Masters().Item(master), x, y);
  }
  Shape dropTask(const Page& page, double x = 3, double y = 6) { return drop(page, "Task", x, y); }

  static std::string text(const Shape& shape, std::string_view cell) {
    return shape.Cells(cell).ResultStr(0).or_("(none)");
  }
  static double number(const Shape& shape, std::string_view cell) { return shape.Cells(cell).Result(0).or_(-999); }
  static Shape marked(const Page& page, std::string_view data1) {
    for (const Shape& shape : page.Shapes().all()) {
      if (shape.Data1() == data1) return shape;
    }
    return {};
  }
  static int countMarked(const Page& page, std::string_view data1) {
    int count = 0;
    for (const Shape& shape : page.Shapes().all()) count += shape.Data1() == data1;
    return count;
  }
};

}  // namespace quorvel
