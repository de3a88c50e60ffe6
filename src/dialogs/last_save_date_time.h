// The dialog that asks how the date of the last save is written.
#pragma once

#include <ctime>

#include "model/form.h"

namespace quorvel::addin {

/// Lists the formats as they write `now`. Cancelled unless it is closed by OK.
class LastSaveDateTime : public Form {
 public:
  explicit LastSaveDateTime(const std::tm& now);

  /// `format` counts from 1, as in `lastSaveFormats`; 0 for none. To be called before the dialog is shown.
  void preselect(int format);
  /// 0 when it was cancelled or nothing is selected.
  int format() const;

 private:
  bool cancelled_ = true;
  Control& lblFormat;
  Control& lstFormats;
  Control& cmdOk;
  Control& Command2;
};

}  // namespace quorvel::addin
