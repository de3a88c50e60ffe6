// The roles of an organisation: one list in the document, and a copy of it in each of a Task's five role rows, so that
// the host offers the roles as a fixed list.
//
// Tasks on background pages, on pages after the first one of these, and inside groups are not changed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/host_model.h"

namespace quorvel::addin {

/// Copies the document's list to every Task. A list with a quotation mark in it makes a formula that the host refuses,
/// and the Tasks keep their old lists.
void updateRoleFormats(const Document& document);

/// The text of a list cell between its quotation marks: ";" before each role, quotation marks doubled.
std::string roleListText(const std::vector<std::string>& roles);

/// The list text with the name inserted in order. `names` is the result of `parse`. Quotation marks are doubled, except
/// in the name of the first role of an empty list.
std::string insertRoleName(const std::vector<std::string>& names, const std::string& newName);

}  // namespace quorvel::addin
