// The services of a session: those without a screen, and the ones that read files of other programs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "headless/headless_platform.h"

namespace quorvel {

class SessionPlatform : public HeadlessPlatform {
 public:
  using HeadlessPlatform::HeadlessPlatform;

  Maybe<std::string> readXmlFile(std::string_view path) override;
  /// Of documents in the binary format of 1997 to 2003; fails for others.
  Maybe<std::vector<std::string>> bookmarksOf(std::string_view path) override;
};

}  // namespace quorvel
