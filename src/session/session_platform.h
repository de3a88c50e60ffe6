// The services of a session: those without a screen, and the ones that read files of other programs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "headless/headless_platform.h"
#include "host/engine/command_bar_set.h"

namespace quorvel {

class SessionPlatform : public HeadlessPlatform {
 public:
  /// `bars` has the clipboard from which buttons get their faces.
  SessionPlatform(std::string addinFolder, std::string configurationFolder, host::CommandBarSet& bars)
      : HeadlessPlatform(std::move(addinFolder), std::move(configurationFolder)), bars_(bars) {}

  bool placeFace(std::string_view pictureFile, unsigned transparentColour) override;
  bool clearClipboard() override;

  Maybe<std::string> readXmlFile(std::string_view path) override;
  /// Of documents in the binary format of 1997 to 2003; fails for others.
  Maybe<std::vector<std::string>> bookmarksOf(std::string_view path) override;

 private:
  host::CommandBarSet& bars_;
};

}  // namespace quorvel
