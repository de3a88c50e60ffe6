// Opens what hyperlinks lead to outside of the drawings, through the platform.
#pragma once

#include "host/engine/link_opener.h"
#include "model/platform.h"

namespace quorvel {

class PlatformLinkOpener : public host::LinkOpener {
 public:
  explicit PlatformLinkOpener(Platform& platform) : platform_(platform) {}
  bool openLink(const std::string& target, host::LinkTarget kind) override;

 private:
  Platform& platform_;
};

}  // namespace quorvel
