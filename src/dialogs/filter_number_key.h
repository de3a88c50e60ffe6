// Which keys a number box takes.
#pragma once

#include "model/form.h"
#include "model/platform.h"

namespace quorvel::addin {

/// The key to let through, or 0 to swallow it, which beeps. Digits, Backspace and Ctrl+Z pass; "-" and "." pass once
/// each unless they are ruled out. A box that holds `maxLength` characters takes no key at all but Ctrl+Z, not even
/// Backspace: its text is changed by Delete, which raises no key press.
int filterNumberKey(Platform& platform, const Control& box, int key, int maxLength, bool noMinus, bool noPoint);

}  // namespace quorvel::addin
