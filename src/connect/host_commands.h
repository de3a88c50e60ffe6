// The numbers that the host's menus and items have, which differ between its releases.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The Insert menu, in every release.
inline constexpr int insertMenuCommand = 30005;

struct HostCommands {
  int hyperlinkItem = 0;  ///< in the Insert menu
  int toolsMenu = 0;
  int reportsItem = 0;  ///< in the Tools menu
};

/// Zeros for a release that is not known: no item has that number.
HostCommands hostCommandsOf(const dsrVisioConnect& connect);

}  // namespace quorvel::addin
