#include "commands/quorvel_reports.h"

#include "connect/host_commands.h"

namespace quorvel::addin {

void cbrQuorvelReports_Click(dsrVisioConnect& connect) {
  const HostCommands commands = hostCommandsOf(connect);
  if (commands.toolsMenu == 0) return;
  for (const CommandBarControl& control :
       connect.gvsoApp.CommandBars().FindControl(commands.toolsMenu).Controls().all()) {
    if (control.Id() == commands.reportsItem) control.Execute();
  }
}

}  // namespace quorvel::addin
