#include "session/platform_link_opener.h"

namespace quorvel {

bool PlatformLinkOpener::openLink(const std::string& target, host::LinkTarget kind) {
  if (kind == host::LinkTarget::Program) {
    MessageBox box;
    box.text = "The hyperlink starts the program " + target + ". Do you want to start it?";
    box.buttons = MessageButtons::YesNo;
    box.icon = MessageIcon::Question;
    box.carefulAnswer = MessageAnswer::No;
    if (platform_.showMessage(box) != MessageAnswer::Yes) return true;
  }
  return platform_.shellOpen(target);
}

}  // namespace quorvel
