// Row names as numbers: compared without regard to case in one step, printed in the case of their creation.
#pragma once

#include <string_view>

#include "base/strong_id.h"

namespace quorvel::host {

/// A name as it was spelled. 0 is no name.
using Atom = StrongId<struct AtomTag>;

/// The atom of this spelling; made when new. Atoms live as long as the process.
Atom intern(std::string_view name);
/// The atom of the name in any letter case.
Atom folded(Atom name);
/// As intern, but never makes one: a null atom for a name that does not exist.
Atom findFolded(std::string_view name);
std::string_view spelling(Atom name);

}  // namespace quorvel::host
