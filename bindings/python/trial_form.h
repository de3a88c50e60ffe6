// A form with any controls that records its events, so that tests can try how a script handles a form.
#pragma once

#include <string>
#include <vector>

#include "model/form.h"

namespace quorvel::python {

struct TrialControl {
  int kind;  ///< of ControlKind
  std::string name;
  std::vector<std::string> items;  ///< rows of a list, tabs of a tab strip
  bool enabled;
  bool multipleSelection;
};

class TrialForm : public Form {
 public:
  explicit TrialForm(const std::vector<TrialControl>& controls);

  /// Such as "click BtnOK" or "lost focus txtName", in order.
  std::vector<std::string> recorded;
};

}  // namespace quorvel::python
