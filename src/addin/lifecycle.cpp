// Connecting the add-in's object to a host and disconnecting it.
#include "connect/dsr_visio_connect.h"
#include "dialogs/ask_task_id_suggestion.h"
#include "dialogs/frm_process_connector_msg.h"

namespace quorvel::addin {

dsrVisioConnect::dsrVisioConnect(Platform& platform)
    : platform(platform),
      askTaskIds(askTaskIdSuggestion),
      askCopiedTaskIds(askCopiedTaskIdSuggestion),
      keepsLinkedTask(askToKeepLinkedTask) {}

void dsrVisioConnect::AddinInstance_OnConnection(Application application) {
  AddinInstance_OnDisconnection();
  installPath = platform.readProfile("Quorvel.ini", "Uninstall", "Quorvel Path", "c:\\", 255);
  // Only the platform's current folder, not that of the process: the process may be a command line or a script with
  // relative paths.
  folderBeforeConnecting = platform.currentFolder();
  platform.setCurrentFolder(installPath);
  gvsoApp = application;
  if (gvsoApp) gvsoApp.backend()->advise(*this);
}

void dsrVisioConnect::AddinInstance_OnDisconnection() {
  taskIdSuggestion.reset();
  copiedTaskIdSuggestion.reset();
  processConnectorMsg.reset();
  if (gvsoApp) gvsoApp.backend()->unadvise(*this);
  gvsoApp = {};
}

}  // namespace quorvel::addin
