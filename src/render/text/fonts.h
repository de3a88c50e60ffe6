// Which face replaces a drawing's font on this machine.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::render {

/// Begins to read the machine's font configuration on a thread of its own. Whoever will need fonts soon calls this
/// first and does something else at the same time; no caller has to.
void findFontsAhead();

/// The installed family that is drawn for `family`: itself when it is there, else one of the same widths or at least
/// the same kind. Never empty.
std::string installedFamily(std::string_view family);

/// Families for a viewer on another machine, best first, ending in a generic one: those of the same widths as `family`.
std::string familyWithStandIns(std::string_view family);

}  // namespace quorvel::render
