#include "commands/find_replace.h"

namespace quorvel::addin {

namespace {
constexpr int barOfMenus = 3, editMenu = 2;
constexpr const char* replaceEntry = "R&eplace...";
}  // namespace

void cbrBtnFindReplace_Click(dsrVisioConnect& connect) {
  const CommandBarControls menu = connect.gvsoApp.CommandBars().Item(barOfMenus).Controls().Item(editMenu).Controls();
  connect.flagFindReplaceActive = true;
  connect.changedShapes.clear();
  for (const CommandBarControl& control : menu.all()) {
    if (control.Caption() == replaceEntry) control.Execute();
  }
}

}  // namespace quorvel::addin
