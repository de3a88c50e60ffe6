// The dialog that chooses what Task Links show.
#pragma once

#include "dialogs/display_dialog.h"

namespace quorvel::addin {

/// Its boxes are in the order of `schema::linkSwitches`. The third one is about the first: without a time there is
/// nothing to hide.
class TaskLinkDisplayOption : public DisplayOptionsDialog {
 public:
  explicit TaskLinkDisplayOption(Platform& platform);

 protected:
  void boxChanged(std::size_t index) override;

 private:
  Control& chkTimeBetweenTasks;
  Control& chkDescription;
  Control& chkGreaterThanZero;
};

}  // namespace quorvel::addin
