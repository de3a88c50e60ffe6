// Which files do something when they are opened, as far as their names show it.
#pragma once

#include <string_view>

namespace quorvel::host {

/// `ending` with its dot and in lower case: ".exe".
bool startsProgram(std::string_view ending);

}  // namespace quorvel::host
