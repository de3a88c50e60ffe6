// What the readers of one single-file drawing share while they run.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <utility>

#include "formats/common/read_state.h"
#include "formats/vdx/font_numbers.h"

namespace quorvel::formats::vdx {

struct FileState : ReadState {
  using ReadState::ReadState;
  FontNumbers fonts;
  /// The places of the rows of long sections, so that reading takes time in proportion to their size.
  std::map<std::pair<host::SheetId, host::SectionNumber>, std::unordered_map<std::uint32_t, std::size_t>> rowPlaces;
};

/// The shared readers hand their state back as what they know of it.
inline FileState& fileState(ReadState& state) { return static_cast<FileState&>(state); }

}  // namespace quorvel::formats::vdx
