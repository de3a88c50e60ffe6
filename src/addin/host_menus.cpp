#include "addin/host_menus.h"

#include <string>

#include "connect/host_commands.h"

namespace quorvel::addin {
namespace {

constexpr const char* markerAction = "QueueMarkerEvent";
constexpr const char* editHyperlinks = "/soln=Quorvel.Quorvel /cmd=1";
constexpr const char* insertLastSave = "/soln=Quorvel.Quorvel /cmd=2";

std::vector<CommandBarControl> insertMenu(const dsrVisioConnect& connect) {
  return connect.gvsoApp.CommandBars().FindControl(insertMenuCommand).Controls().all();
}

bool isLastSave(const CommandBarControl& control) { return control.Parameter() == insertLastSave; }

}  // namespace

void overWriteHyperlinkBtnFn(const dsrVisioConnect& connect) {
  const int item = hostCommandsOf(connect).hyperlinkItem;
  for (const CommandBarControl& control : insertMenu(connect)) {
    if (!(control.Id() == item)) continue;
    control.SetOnAction(std::string(markerAction));
    control.SetParameter(std::string(editHyperlinks));
  }
}

void resetHyperlinkBtnFn(const dsrVisioConnect& connect) {
  const int item = hostCommandsOf(connect).hyperlinkItem;
  for (const CommandBarControl& control : insertMenu(connect)) {
    if (control.Id() == item) control.Reset();
  }
}

void insertControlDocLastSave(const dsrVisioConnect& connect) {
  for (const CommandBarControl& control : insertMenu(connect)) {
    if (isLastSave(control)) return;
  }
  constexpr int button = 1;
  const CommandBarControl made = connect.gvsoApp.CommandBars().FindControl(insertMenuCommand).Controls().Add(button);
  made.SetCaption("L&ast Save Date/Time");
  made.SetOnAction(std::string(markerAction));
  made.SetParameter(std::string(insertLastSave));
}

void deleteDocLastSave(const dsrVisioConnect& connect) {
  for (const CommandBarControl& control : insertMenu(connect)) {
    if (isLastSave(control)) control.Delete();
  }
}

}  // namespace quorvel::addin
