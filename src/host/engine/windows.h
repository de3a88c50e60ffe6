// Windows without a screen: each open document has one, with its page and its selection.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/sheet/ids.h"

namespace quorvel::host {

using WindowId = StrongId<struct WindowTag>;

struct WindowState {
  WindowId id;
  DocumentId document;
  PageId page;
  int type = 1, subType = 128;  ///< a drawing window that shows a page

  const std::vector<SheetId>& selection() const { return *selected; }
  void select(std::vector<SheetId> shapes) {
    selected = std::make_shared<const std::vector<SheetId>>(std::move(shapes));
  }

  /// In order of selecting. Shared with the selections that were handed out, so that each may be a new object.
  std::shared_ptr<const std::vector<SheetId>> selected = std::make_shared<const std::vector<SheetId>>();
};

/// A selection as it was when it was asked for, with the mode in which it is walked.
struct SelectionSnapshot {
  std::shared_ptr<const std::vector<SheetId>> shapes;
  int iterationMode = 0;
};

/// Selections that were handed out. A handle keeps nothing alive, so only the last ones are kept.
class SelectionSnapshots {
 public:
  std::uint32_t add(SelectionSnapshot snapshot) {
    snapshots_[++last_] = std::move(snapshot);
    if (last_ > kept) snapshots_.erase(last_ - kept);
    return last_;
  }
  SelectionSnapshot* find(std::uint32_t id) {
    const auto found = snapshots_.find(id);
    return found == snapshots_.end() ? nullptr : &found->second;
  }

 private:
  static constexpr std::uint32_t kept = 10000;
  std::unordered_map<std::uint32_t, SelectionSnapshot> snapshots_;
  std::uint32_t last_ = 0;
};

}  // namespace quorvel::host
