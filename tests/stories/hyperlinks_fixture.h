// A saved map of two pages whose user works with the hyperlink dialog.
#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "stories/map_fixture.h"

namespace quorvel {

class HyperlinkTest : public MapTest {
 protected:
  const std::string folder = testing::TempDir() + "quorvel-hyperlinks-" + std::to_string(getpid()) + "/";
  const std::string file = folder + "Order.vsdx";
  Page page, second;
  Shape task, other, connector;
  std::vector<std::string> messages;
  std::vector<MessageAnswer> answers;  ///< to the messages in turn; the button that does most when they run out
  std::string chosenFile;              ///< what the file dialog gives; empty: it is cancelled
  std::string filterAsked;
  std::function<void(Form&)> inDialog, inPicker, inBookmarks;

  void SetUp() override {
    MapTest::SetUp();
    std::filesystem::create_directories(folder + "sub");
    page = newMap("A Orders");
    task = dropTask(page, 2, 8);
    other = dropTask(page, 5, 8);
    connector = drop(page, "Process Connector", 8, 8);
    second = map.Pages().Add();
    ASSERT_TRUE(second.SetName("B Packing"));
    dropTask(second, 3, 8);
    app.ActiveWindow().SetPage(page);
    auto& platform = session.platform();
    platform.onForm = [this](Form& form) {
      if (Control* ok = form.name() == "frmTaskIdSuggestion" ? form.find("BtnOK") : nullptr) ok->click();
      const auto& act = form.name() == "frmcustomisehuperlink"  ? inDialog
                        : form.name() == "frmhyperlinkDocument" ? inPicker
                                                                : inBookmarks;
      if (act) act(form);
    };
    platform.onMessage = [this](const MessageBox& box) {
      EXPECT_EQ(box.title, "Quorvel");
      messages.push_back(box.text);
      const bool isQuestion = box.buttons != MessageButtons::Ok;
      return messages.size() <= answers.size() ? answers[messages.size() - 1]
             : isQuestion                      ? MessageAnswer::Yes
                                               : MessageAnswer::Ok;
    };
    platform.onFileDialog = [this](const FileDialog& dialog) {
      filterAsked = dialog.filter;
      return chosenFile.empty() ? Maybe<std::string>() : Maybe<std::string>(chosenFile);
    };
  }
  void TearDown() override {
    MapTest::TearDown();
    std::filesystem::remove_all(folder);
  }

  void save(const std::string& as = {}) { ASSERT_TRUE(map.SaveAs(as.empty() ? file : as)) << lastRefusal(); }

  /// The dialog for these shapes, opened as a shape's menu does it.
  void edit(const std::vector<Shape>& shapes, std::function<void(Form&)> act) {
    messages.clear();
    const Window window = app.ActiveWindow();
    window.DeselectAll();
    for (const Shape& shape : shapes) ASSERT_TRUE(window.Select(shape, visio::select)) << lastRefusal();
    inDialog = std::move(act);
    bool wasShown = false;
    const auto onForm = session.platform().onForm;
    session.platform().onForm = [&](Form& form) {
      wasShown = true;
      onForm(form);
    };
    ASSERT_TRUE(app.QueueMarkerEvent("/soln=Quorvel.Quorvel /cmd=1"));
    session.platform().onForm = onForm;
    EXPECT_TRUE(wasShown);
  }
  void edit(const Shape& shape, std::function<void(Form&)> act) { edit(std::vector{shape}, std::move(act)); }

  static bool click(Form& form, const char* control) { return form.find(control)->click(); }
  static void type(Form& form, const char* control, const std::string& text) {
    EXPECT_TRUE(form.find(control)->type(text)) << control;
  }
  static std::string shown(Form& form, const char* control) { return form.find(control)->text(); }
  static const std::vector<ListRow>& rowsOf(Form& form) { return form.find("lstLinks")->rows(); }
  static std::string column(Form& form, std::size_t row, std::size_t column) {
    return rowsOf(form).at(row).columns.at(column);
  }
  static void clickRow(Form& form, std::size_t row) {
    form.find("lstLinks")->focus();
    form.find("lstLinks")->selectRow(row);
  }
  static std::vector<std::string> textsOf(Form& form, const char* list) {
    std::vector<std::string> texts;
    for (const ListRow& row : form.find(list)->rows()) texts.push_back(row.text());
    return texts;
  }

  /// A hyperlink row as one text: address | sub-address | zoom | record | new window.
  static std::string linkText(const Hyperlink& link) {
    const auto none = std::string("(none)");
    return link.Address().or_(none) + " | " + link.SubAddress().or_(none) + " | " + link.ExtraInfo().or_(none) + " | " +
           link.Frame().or_(none) + " | " + (link.NewWindow() == true ? "new" : "same");
  }
  static std::vector<std::string> linksOf(const Shape& shape) {
    std::vector<std::string> texts;
    for (const Hyperlink& link : shape.Hyperlinks().all()) texts.push_back(linkText(link));
    return texts;
  }
  static Shape box(const Shape& task) { return task.Shapes().Item(3); }
  static Shape memberMarked(const Shape& task, std::string_view mark) {
    for (const Shape& member : task.Shapes().all()) {
      if (member.Data1() == mark || member.Data3() == mark) return member;
    }
    return {};
  }
  using Texts = std::vector<std::string>;
};

}  // namespace quorvel
