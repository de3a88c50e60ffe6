// The files of the install folder that code refers to, and how one is found on the machine at hand.
#pragma once

#include <string>
#include <string_view>

#include "model/platform.h"

namespace quorvel::addin {

namespace installed {
inline constexpr std::string_view logo = "Images/Quorvel Logo.jpg";
inline constexpr std::string_view legend = "Images/Quorvel Legend.gif";
}  // namespace installed

/// The full path of a file below the add-in's own folder. `relative` may be written with either kind of slash; a
/// leading one counts for nothing. The path is written with "/", which every system that we run on takes.
std::string installedFile(Platform& platform, std::string_view relative);

}  // namespace quorvel::addin
