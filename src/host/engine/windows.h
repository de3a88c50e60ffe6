// Windows without a screen: each open document has one, with its page and its selection.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
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

}  // namespace quorvel::host
