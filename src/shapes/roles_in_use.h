// Renaming and deleting roles that Tasks use.
//
// Tasks on background pages, on pages after the first one of these, and inside groups are not changed.
#pragma once

#include <string>
#include <vector>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Gives every use of a role in the document the new name; an empty one clears it. Letter case counts. A renamed role
/// keeps its hyperlinks. Quotation marks in the new name are not doubled: the host refuses a name that
/// holds one.
void UpdateOldRoleNames(dsrVisioConnect& connect, const Document& document, const std::string& oldName,
                        const std::string& newName);

/// The names that may be deleted: the user is asked once about each name that a Task uses; a declined one becomes empty
/// in the result.
std::vector<std::string> deletableRoles(dsrVisioConnect& connect, const Document& document,
                                        std::vector<std::string> names);

}  // namespace quorvel::addin
