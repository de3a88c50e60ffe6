#include "commands/help.h"

#include <string>

#include "data/install_folder.h"
#include "data/web_site.h"

namespace quorvel::addin {

void cbrBtnQVHelp_Click(dsrVisioConnect& connect) {
  connect.platform.shellOpen(installedFile(connect.platform, installed::help));
}

void cbrBtnAskQVExpert_Click(dsrVisioConnect& connect) {
  connect.platform.shellOpen("mailto:" + std::string(website::supportMailbox) + "?subject=HELP&body=");
}

}  // namespace quorvel::addin
