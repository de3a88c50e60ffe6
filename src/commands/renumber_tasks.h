// The command Renumber Tasks: the Tasks of a selection or of a page get consecutive IDs, and hyperlinks follow.
#pragma once

#include <string>
#include <string_view>

#include "commands/display_scope.h"
#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Asks for letters, number and scope. Does nothing on a background page and outside of maps.
void cbrBtnRenumberTasks_Click(dsrVisioConnect& connect);

/// Gives IDs to the Tasks among the target's selected shapes, or of its page, in the order of that collection and not
/// in that of their places. `number` is the one after the last ID afterwards. A Task whose ID is guarded keeps it and
/// uses up a number. Does nothing for another scope.
void RenumberZNBShapes(dsrVisioConnect& connect, const DisplayTarget& target, const std::string& letters, long& number,
                       std::string_view scope);

}  // namespace quorvel::addin
