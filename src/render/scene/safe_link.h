// Which links a picture may carry.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::render {

/// The address as a link may carry it; empty when following it would run a script.
std::string safeLink(std::string_view address);

}  // namespace quorvel::render
