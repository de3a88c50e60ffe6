// The keys that a number box accepts.
#pragma once

#include "model/form.h"
#include "model/platform.h"

namespace quorvel::addin {

/// The key to let through, or 0 to reject it, which beeps. Digits, Backspace and Ctrl+Z pass; "-" and "." pass once
/// each unless they are excluded. A box that holds `maxLength` characters accepts no key but Ctrl+Z, not even
/// Backspace: its text is changed by Delete, which raises no key press.
int filterNumberKey(Platform& platform, const Control& box, int key, int maxLength, bool noMinus, bool noPoint);

}  // namespace quorvel::addin
