// A form of any controls that writes down what reaches it: for trying how a script handles a form without the occasion.
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
  std::vector<std::string> heard;
};

}  // namespace quorvel::python
