// The hyperlink dialog and the rename of a page while the host refuses one call of the add-in's, each in turn: no link
// leads to another target, and none is lost that was not deleted.
#include <gtest/gtest.h>

#include <algorithm>

#include "commands/edit_hyperlinks.h"
#include "failure/story_sweep.h"

namespace quorvel {
namespace {

using Stage = StorySweep::Stage;

Shape first(const Page& page, std::string_view master) {
  for (const Shape& shape : page.Shapes().all()) {
    if (shape.Master().Name() == master) return shape;
  }
  return {};
}

void select(Stage& stage, const Shape& shape) {
  const Window window = stage.user.ActiveWindow();
  window.SetPage(stage.page);
  window.DeselectAll();
  window.Select(shape, visio::select);
}

void drawMap(Stage& stage) {
  stage.page.SetName(std::string("A One"));
  const auto drop = [&](const Page& page, const char* master, double x) {
    return page.Drop(stage.stencil.Masters().Item(master), x, 6);
  };
  drop(stage.page, "Task", 2);
  drop(stage.page, "Process Connector", 5);
  const Document map = stage.page.Document();
  const Page second = map.Pages().Add();
  second.SetName(std::string("B Two"));
  drop(second, "Task", 2);
  stage.user.ActiveWindow().SetPage(stage.page);
  // As the first save leaves it.
  map.DocumentSheet().Cells("User.DocumentSaved").FormulaForce("True");
}

/// Links to the second page's Task, made without the dialog.
void link(const Shape& shape, const std::string& subAddress) {
  const Hyperlink made = shape.AddHyperlink();
  made.SetSubAddress(subAddress);
  made.SetDescription(subAddress);
  made.SetFrame(std::string("Task+Rel++"));
}

void answer(Form& form) {
  if (Control* ok = form.find("BtnOK"); ok && form.name() == "frmTaskIdSuggestion") ok->click();
  if (form.name() != "frmcustomisehuperlink") return;
  const auto press = [&](const char* control) { form.find(control)->click(); };
  const auto type = [&](const char* control, const char* text) { form.find(control)->type(text); };
  if (form.find("Option_Document")->enabled()) {
    press("OptEmail");
    type("txtAddress_email", "a@b.c");
    press("cmbApplay");
  } else {
    type("Comb_Page", "B Two");
    type("Comb_Task", "B01");
    press("cmbApplay");
  }
  form.find("lstLinks")->selectRow(0);
  press("cmbSaveAndClose");
}

std::vector<std::string> targetsOf(const Shape& shape) {
  std::vector<std::string> targets;
  for (const Hyperlink& each : shape.Hyperlinks().all())
    targets.push_back(each.Address().or_("?") + "|" + each.SubAddress().or_("?"));
  return targets;
}

TEST(RefusedHyperlinks, LinksEditedInTheDialog) {
  const auto edit = [](Stage& stage) {
    const Shape task = first(stage.page, "Task"), connector = first(stage.page, "Process Connector");
    select(stage, task);
    addin::editHyperlinks(stage.connect);
    select(stage, connector);
    addin::editHyperlinks(stage.connect);
    // The link that was there is there once, and nothing else but what was typed.
    std::vector<std::string> links = targetsOf(task);
    EXPECT_EQ(std::ranges::count(links, "|B Two/B01"), 1) << links.size();
    std::erase_if(links, [](const std::string& each) { return each == "|B Two/B01" || each == "mailto:a@b.c|"; });
    EXPECT_TRUE(links.empty()) << links.front();
    for (const std::string& each : targetsOf(connector)) EXPECT_EQ(each, "|B Two/B01");
    const std::string shown = connector.Cells("Prop.Connecting_TaskID").ResultStr(0).or_("?");
    EXPECT_TRUE(shown == "Z99" || shown == "B01") << shown;
  };
  StorySweep(
      [](Stage& stage) {
        drawMap(stage);
        link(first(stage.page, "Task"), "B Two/B01");
      },
      edit, answer)
      .refuseEach(1, StorySweep::toTheEnd, 7, 300);
}

TEST(RefusedHyperlinks, ARenamedPage) {
  const auto rename = [](Stage& stage) {
    const Page second = stage.page.Document().Pages().Item("B Two");
    EXPECT_TRUE(second.SetName(std::string("B Three")));
    // Whatever was refused, all links lead to one page.
    std::vector<std::string> links = targetsOf(first(stage.page, "Task"));
    for (const std::string& each : targetsOf(first(stage.page, "Process Connector"))) links.push_back(each);
    EXPECT_EQ(links.size(), 3u);
    for (const std::string& each : links) EXPECT_EQ(each, links.front());
  };
  StorySweep(
      [](Stage& stage) {
        drawMap(stage);
        link(first(stage.page, "Task"), "B Two/B01");
        link(first(stage.page, "Task"), "B Two/B01");
        link(first(stage.page, "Process Connector"), "B Two/B01");
      },
      rename, answer)
      .refuseEach(1, StorySweep::toTheEnd, 2, 60);
}

}  // namespace
}  // namespace quorvel
