// Escape in a control closes its dialog, which counts as a refusal.
#pragma once

#include <functional>

#include "model/form.h"

namespace quorvel::addin {

/// Other keys go to `filter`; without one they pass.
inline void escapeUnloads(Control& control, std::function<int(int)> filter = {}) {
  control.onKeyPress = [&form = control.form(), filter = std::move(filter)](int key) {
    if (key == keys::escape) {
      form.close();
      return 0;
    }
    return filter ? filter(key) : key;
  };
}

}  // namespace quorvel::addin
