// Numbers that name the engine's objects. Never used twice in one process run of a store, so that a stale one finds
// nothing.
#pragma once

#include "base/strong_id.h"

namespace quorvel::host {

using SheetId = StrongId<struct SheetTag>;
using PageId = StrongId<struct PageTag>;
using MasterId = StrongId<struct MasterTag>;
using DocumentId = StrongId<struct DocumentTag>;

}  // namespace quorvel::host
