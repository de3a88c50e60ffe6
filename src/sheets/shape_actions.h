// The entries of our shapes' menus, as the formulas that the host runs and shows.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

// `separator` is the argument separator of the machine, see `listSeparator`.

/// Opens the host's shape data dialog.
inline constexpr const char* shapeDataAction = "= docmd(1312)";
/// Queues the marker that opens our hyperlink dialog.
std::string hyperlinkAction(std::string_view separator);
/// The caption while the add-in holds the document; empty without it, so that a dead entry does not show.
std::string menuWithAddin(std::string_view caption, std::string_view separator);
/// 1 while the document forbids defining.
std::string disabledFormula(std::string_view separator);

/// Gives a row of the menu (1-based) what it does and its caption's formula.
void setAction(const Shape& shape, int row, std::string_view action, std::string_view menu);

}  // namespace quorvel::addin
