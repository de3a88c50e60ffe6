// Makes all that a command writes one undo step.
#pragma once

#include <string>

#include "model/host_model.h"

namespace quorvel::addin {

/// Groups everything that is written during its lifetime, and commits it. When the host opens no scope, each write is a
/// step of its own. The host does not close the document during its lifetime.
class UndoStep {
 public:
  UndoStep(const Application& application, const std::string& name)
      : application_(application), scope_(application.BeginUndoScope(name)) {}
  ~UndoStep() {
    // A scope that stays open would take in all later work, so a refused call is repeated once.
    if (scope_ && !application_.EndUndoScope(*scope_, true)) application_.EndUndoScope(*scope_, true);
  }
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

 private:
  Application application_;
  Maybe<int> scope_;
};

}  // namespace quorvel::addin
