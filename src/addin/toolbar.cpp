#include "addin/toolbar.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <vector>

#include "base/basic_text.h"
#include "commands/about_quorvel.h"
#include "commands/customize_role_names.h"
#include "commands/help.h"
#include "commands/quorvel_options.h"
#include "commands/quorvel_reports.h"
#include "commands/renumber_tasks.h"
#include "commands/task_display.h"
#include "commands/task_display_options.h"
#include "commands/task_link_display_options.h"
#include "data/install_folder.h"
#include "schema/display_switches.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

struct Button {
  const char *picture, *tag, *caption, *tooltip;
  CommandBarButton dsrVisioConnect::*field;
  void (*run)(dsrVisioConnect& connect);
  bool beginsGroup = false;
};
using Connect = dsrVisioConnect;

/// In the order of the toolbar. Number 07 was given up.
constexpr std::array<Button, 10> buttons{{
    {"01.Task Link Display Options.bmp", "TaskLinkDisplayOption", "Task Link Display Option",
     "Task Link Display Options", &Connect::cbrBtnTaskLinkDisplayOption, cbrBtnTaskLinkDisplayOption_Click},
    {"02.Task Display On_Off.bmp", "TaskDisplay", "Task Display On/Off", "Task Display On/Off",
     &Connect::cbrBtnTaskdisplay, cbrBtnTaskdisplay_Click},
    {"03.Task Display Options.bmp", "Taskdisplayoption", "Task Display Options", "Task Display Options",
     &Connect::cbrBtnTaskDisplayOption, cbrBtnTaskDisplayOption_Click},
    {"04.Renumber Tasks.bmp", "RenumberTasks", "Renumber Tasks", "Renumber Tasks", &Connect::cbrBtnRenumberTasks,
     cbrBtnRenumberTasks_Click},
    {"05.Customize Role Names.bmp", "customizeRoleName", "Customize Role Names", "Customize Role Names",
     &Connect::cbrBtnCustomizeRoleName, cbrBtnCustomizeRoleName_Click, true},
    {"06.Quorvel Options.bmp", "QuorvelOption", "Quorvel Option", "Quorvel Options", &Connect::cbrQuorvelOption,
     cbrQuorvelOption_Click},
    {"08.Quorvel Reports.bmp", "QuorvelReports", "Quorvel Reports", "Quorvel Reports", &Connect::cbrQuorvelReports,
     cbrQuorvelReports_Click},
    {"09.Ask Quorvel Expert.bmp", "AskQVExpert", "Ask Quorvel Expert", "Ask Quorvel Expert",
     &Connect::cbrBtnAskQVExpert, cbrBtnAskQVExpert_Click, true},
    {"10.Quorvel Help.bmp", "QVHelp", "Quorvel Help", "Quorvel Help", &Connect::cbrBtnQVHelp, cbrBtnQVHelp_Click},
    {"11.About Quorvel.bmp", "AboutQuorvel", "About Quorvel", "About Quorvel", &Connect::cbrBtnAboutQuorvel,
     cbrBtnAboutQuorvel_Click},
}};

/// Pixels of this colour in the pictures are transparent.
constexpr unsigned transparentColour = 0xDCDCD4;
constexpr int top = 1, buttonType = 1, noCustomizing = 1;
/// Drawing windows.
constexpr const char* context = "2*";

constexpr const char *profile = "Quorvel.ini", *section = "Toolbar";
constexpr int profileBuffer = 10;

/// A number that the profile keeps of the toolbar's place; the host numbers and sorts bars by the last two.
struct PlaceKey {
  const char *key, *fallback;
  Maybe<int> (CommandBar::*get)() const;
};
/// In the order in which they are written.
constexpr std::array<PlaceKey, 7> placeKeys{{{"Height", "-1", &CommandBar::Height},
                                             {"Width", "0", &CommandBar::Width},
                                             {"Top", "0", &CommandBar::Top},
                                             {"Left", "0", &CommandBar::Left},
                                             {"Position", "-1", &CommandBar::Position},
                                             {"Index", "0", &CommandBar::Index},
                                             {"RowIndex", "0", &CommandBar::RowIndex}}};

/// Puts the bar where it was when the last map was closed; nothing when that is not known.
void putBack(Platform& platform, const CommandBar& bar) {
  const auto kept = [&](std::string_view key) {
    const auto place = std::ranges::find(placeKeys, key, &PlaceKey::key);
    const std::string text = platform.readProfile(profile, section, place->key, place->fallback, profileBuffer);
    return static_cast<int>(val(text));
  };
  constexpr int notKnown = -1, atLeft = 0, atTop = 1, atRight = 2, atBottom = 3;
  const int position = kept("Position");
  if (position == notKnown) return;
  bar.SetPosition(position);
  bar.SetRowIndex(kept("RowIndex"));
  if (position == atTop || position == atBottom) {
    bar.SetLeft(kept("Left"));
  } else if (position == atLeft || position == atRight) {
    bar.SetTop(kept("Top"));
  } else {
    bar.SetTop(kept("Top"));
    bar.SetLeft(kept("Left"));
    bar.SetHeight(kept("Height"));
    bar.SetWidth(kept("Width"));
  }
}

bool isOn(const Cell& cell) { return cell.Result(visio::unitsNone) != 0.0; }

void setState(const CommandBarButton& button, bool isDown) { button.SetState(isDown ? -1 : 0); }

}  // namespace

void CreateCommandBar(dsrVisioConnect& connect, const std::string& name) {
  if (connect.toolbarBuilt) return;
  constexpr bool isMenu = false, isTemporary = true;
  connect.toolbar = connect.gvsoApp.CommandBars().Add(name, top, isMenu, isTemporary);
  connect.toolbarBuilt = true;
  connect.toolbar.SetProtection(noCustomizing);
  connect.toolbar.SetContext(context);
  for (const Button& each : buttons) {
    const std::string picture =
        installedFile(connect.platform, std::string(installed::toolbarFaces) + "/" + each.picture);
    connect.*each.field = AddButton(connect, connect.toolbar, each.tag, each.caption, each.tooltip, picture);
    if (each.beginsGroup) (connect.*each.field).SetBeginGroup(true);
  }
  connect.platform.clearClipboard();
  putBack(connect.platform, connect.toolbar);
}

CommandBarButton AddButton(const dsrVisioConnect& connect, const CommandBar& bar, const char* tag, const char* caption,
                           const char* tooltip, const std::string& picture) {
  const CommandBarButton button = bar.Controls().Add(buttonType);
  button.SetTag(tag);
  button.SetCaption(caption);
  button.SetTooltipText(tooltip);
  if (picture.empty()) return button;
  connect.platform.clearClipboard();
  if (connect.platform.placeFace(picture, transparentColour)) button.PasteFace();
  return button;
}

void removeToolbar(dsrVisioConnect& connect) {
  for (const PlaceKey& each : placeKeys) {
    if (const Maybe<int> value = (connect.toolbar.*each.get)())
      connect.platform.writeProfile(profile, section, each.key, std::to_string(*value));
  }
  connect.toolbarBuilt = false;
  connect.toolbar.Delete();
  connect.toolbar = {};
  for (const Button& each : buttons) connect.*each.field = {};
}

void runButton(dsrVisioConnect& connect, const CommandBarButton& button) {
  const Maybe<std::string> tag = button.Tag();
  const auto found = std::ranges::find_if(buttons, [&](const Button& each) { return tag == each.tag; });
  if (found != buttons.end()) found->run(connect);
}

void btnStatus(const Selection& selection, const Page& page, const CommandBarButton& button) {
  const schema::NamedRow row = schema::switches::linkTime;
  for (const Shape& shape : selection.all()) {
    if (!(shape.Master().Name() == masters::taskLink) || shape.CellExists(row, 0) != true) continue;
    setState(button, isOn(shape.Cells(row)));
    return;
  }
  setState(button, isOn(page.PageSheet().Cells(row)));
}

void showDisplayStates(const dsrVisioConnect& connect, const Window& window) {
  if (!connect.toolbarBuilt) return;
  const schema::NamedRow row = schema::switches::taskDetails;
  const std::vector<Shape> selected = window.Selection().all();
  for (const Shape& shape : selected | std::views::reverse) {
    if (!(shape.Master().Name() == masters::task)) continue;
    if (shape.CellExists(row, 0) == true) {
      setState(connect.cbrBtnTaskdisplay, isOn(shape.Cells(row)));
      return;
    }
    if (!(shape.Data1() == marks::subTaskBox)) return;
  }
  const Shape page = window.Page().PageSheet();
  if (page.CellExists(row, 0) == true) setState(connect.cbrBtnTaskdisplay, isOn(page.Cells(row)));
}

}  // namespace quorvel::addin
