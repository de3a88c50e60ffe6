// The files of the install folder that code refers to, and the full path of one on this machine.
#pragma once

#include <string>
#include <string_view>

#include "model/platform.h"

namespace quorvel::addin {

namespace installed {
inline constexpr std::string_view logo = "Images/Quorvel Logo.jpg";
inline constexpr std::string_view legend = "Images/Quorvel Legend.gif";
inline constexpr std::string_view hyperlinkMark = "Icons/hyperlink.gif";
inline constexpr std::string_view notesMark = "Icons/notes indicator.gif";
inline constexpr std::string_view reports = "Reports";  ///< a folder
inline constexpr std::string_view toolbarFaces = "Icons/Toolbar";
inline constexpr std::string_view help = "Help/Quorvel_Help_v04.hlp";
}  // namespace installed

/// The full path of a file below the add-in's own folder. `relative` may be written with either kind of slash; a
/// leading one is ignored. The path is written with "/", which every supported system accepts.
std::string installedFile(Platform& platform, std::string_view relative);

}  // namespace quorvel::addin
