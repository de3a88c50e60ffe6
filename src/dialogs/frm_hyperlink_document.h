// The dialog that lists the links of a drawing, so that one of them is defined once more.
#pragma once

#include <string_view>
#include <vector>

#include "hyperlinks/existing_links.h"
#include "model/form.h"

namespace quorvel::addin {

/// Cancelled unless it is closed by OK with a selected row. It writes nothing.
class frmhyperlinkDocument : public Form {
 public:
  /// Lists the links of the kind, as `linkKinds` spells it.
  frmhyperlinkDocument(const Document& document, std::string_view kind);

  /// Null when it was cancelled.
  const ExistingLink* chosen() const { return chosen_; }

 private:
  void fillPickerList(std::string_view kind, Control& list);

  const std::vector<ExistingLink> links_;  ///< by row of the list
  const ExistingLink* chosen_ = nullptr;
  Control& lstLinks;
  Control& BtnOK;
  Control& btnCancel;
};

}  // namespace quorvel::addin
