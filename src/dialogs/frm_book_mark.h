// The dialog that lists the bookmarks of a document.
#pragma once

#include <string>
#include <vector>

#include "model/form.h"

namespace quorvel::addin {

/// Cancelled unless it is closed by OK with a selected row.
class frmBookMark : public Form {
 public:
  explicit frmBookMark(const std::vector<std::string>& bookmarks);

  /// Empty when it was cancelled.
  const std::string& chosen() const { return chosen_; }

 private:
  std::string chosen_;
  Control& fraBookmarks;
  Control& lstBookmarks;
  Control& btnOK;
  Control& btnCancel;
};

}  // namespace quorvel::addin
