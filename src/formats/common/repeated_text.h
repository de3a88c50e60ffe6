// An instance's text that is its master's, with the instance's own fields in it.
#pragma once

#include "host/sheet/store.h"

namespace quorvel::formats {

/// True for a sheet without a text of its own whose fields make the inherited text show something else than the master
/// shows. Its element is written out all the same: programs that don't evaluate fields show its text. A file
/// without it stays so until a field changes.
bool showsOtherFields(const host::Store& store, const host::Sheet& sheet);

/// The other way, for a sheet just read: a text that only repeats the master's goes on following it. A save writes the
/// same element again.
void inheritRepeatedText(host::Store& store, host::Sheet& sheet);

}  // namespace quorvel::formats
