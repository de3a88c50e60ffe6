// The question before changes in a dialog are discarded.
#pragma once

#include "model/platform.h"

namespace quorvel::addin {

/// True when the user agrees.
inline bool confirmsCancel(Platform& platform) {
  return platform.showMessage({
             .text = "Are you sure you want to cancel without saving the changes you have made?",
             .buttons = MessageButtons::YesNo,
         }) == MessageAnswer::Yes;
}

}  // namespace quorvel::addin
