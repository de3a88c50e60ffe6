// Renaming and deleting roles that Tasks use.
//
// Tasks on background pages, on pages behind the first one of these, and inside groups are not reached.
#pragma once

#include <string>
#include <vector>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Gives every use of a role in the document the new name; an empty one clears it. Letter case counts. A renamed role
/// keeps its hyperlinks. The new name stands between quotation marks as it is: one that holds a quotation mark is
/// refused by the host.
void UpdateOldRoleNames(dsrVisioConnect& connect, const Document& document, const std::string& oldName,
                        const std::string& newName);

/// Which of the names may be deleted: each that a Task uses is asked about once, and blanked when the user declines.
std::vector<std::string> deletableRoles(dsrVisioConnect& connect, const Document& document,
                                        std::vector<std::string> names);

}  // namespace quorvel::addin
