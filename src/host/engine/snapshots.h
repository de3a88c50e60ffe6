// What handles to selections and to characters refer to: what they were made of, with what scripts set on them.
#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/maybe.h"
#include "host/sheet/ids.h"

namespace quorvel::host {

/// A selection as it was when it was asked for, with the mode in which it is walked.
struct SelectionSnapshot {
  std::shared_ptr<const std::vector<SheetId>> shapes;
  int iterationMode = 0;
  /// The members in this mode, from the first question on: walking all of them must not list them for each.
  std::shared_ptr<const std::vector<SheetId>> listed;
};

/// A part of a shape's text: 0-based places between its characters, fields expanded.
struct CharacterRange {
  int begin = 0;
  Maybe<int> end;  ///< nothing: the end of the text
};

/// Those that were handed out. A handle keeps nothing alive, so only the last ones are kept.
template <class Snapshot>
class Snapshots {
 public:
  std::uint32_t add(Snapshot snapshot) {
    snapshots_[++last_] = std::move(snapshot);
    if (last_ > kept) snapshots_.erase(last_ - kept);
    return last_;
  }
  Snapshot* find(std::uint64_t id) {
    const auto found = snapshots_.find(static_cast<std::uint32_t>(id));
    return found == snapshots_.end() ? nullptr : &found->second;
  }

 private:
  static constexpr std::uint32_t kept = 10000;
  std::unordered_map<std::uint32_t, Snapshot> snapshots_;
  std::uint32_t last_ = 0;
};

}  // namespace quorvel::host
