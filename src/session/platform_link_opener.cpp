#include "session/platform_link_opener.h"

#include "base/text.h"

namespace quorvel {
namespace {

/// A path as a question shows it, without what would break its line or turn its order around: "gpj.exe" could read as
/// a picture's name.
std::string shownPath(std::string_view path) {
  std::string shown;
  for (std::size_t at = 0; at < path.size();) {
    const char32_t c = decodeNext(path, at);
    const bool turns =
        c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    const bool breaks = c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x2028 || c == 0x2029;
    if (!turns && !breaks) appendUtf8(shown, c);
  }
  return shown;
}

}  // namespace

bool PlatformLinkOpener::openLink(const std::string& target, host::LinkTarget kind) {
  if (kind == host::LinkTarget::Program) {
    MessageBox box;
    box.text = "The hyperlink starts the program \"" + shownPath(target) + "\". Do you want to start it?";
    box.buttons = MessageButtons::YesNo;
    box.icon = MessageIcon::Question;
    box.carefulAnswer = MessageAnswer::No;
    if (platform_.showMessage(box) != MessageAnswer::Yes) return true;
  }
  return platform_.shellOpen(target);
}

}  // namespace quorvel
