// Reads the part that holds the shapes and connects of a page or master.
#pragma once

#include <string>

#include "formats/common/read_state.h"

namespace quorvel::formats {

/// Reads a page's or master's part into the page and its carried part. Empty when it went well; else what is wrong with
/// the part. `bytes` are used up.
std::string readContents(ReadState& state, host::PageId page, CarriedPage& carried, std::string& bytes);

}  // namespace quorvel::formats
