// The two layers of a page that decide whether the details of its Tasks show.
#pragma once

#include <string_view>

namespace quorvel::schema::layers {

inline constexpr std::string_view visible = "VisibleLayer", invisible = "InvisibleLayer";

}  // namespace quorvel::schema::layers
