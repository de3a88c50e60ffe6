// What a command of ours does is one step for the user to take back.
#pragma once

#include <string>

#include "model/host_model.h"

namespace quorvel::addin {

/// Groups everything that is written while it lives, and keeps it. Where the host opens no scope, each write is a step
/// of its own. While one lives the host does not close the document at hand.
class UndoStep {
 public:
  UndoStep(const Application& application, const std::string& name)
      : application_(application), scope_(application.BeginUndoScope(name)) {}
  ~UndoStep() {
    // A scope that stays open would take in all later work, so a host that refuses is asked once more.
    if (scope_ && !application_.EndUndoScope(*scope_, true)) application_.EndUndoScope(*scope_, true);
  }
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

 private:
  Application application_;
  Maybe<int> scope_;
};

}  // namespace quorvel::addin
