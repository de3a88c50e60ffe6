// Members of instances that a file omitted: they are all the master's. The engine has them, but a
// unchanged drawing is saved without them again.
#pragma once

#include <unordered_set>

#include "host/sheet/store.h"

namespace quorvel::formats {

/// Members of the page's instances that may stay out of the file: nothing of their own is in them, and opening the file
/// again gives them the same numbers. Empty when one of them cannot, because the numbers depend on each other.
std::unordered_set<host::SheetId> membersToOmit(const host::Store& store, const host::Page& page);

}  // namespace quorvel::formats
