// The menu entries of a map's shapes, as the formulas that the host runs and shows.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

// `separator` is the argument separator of the machine, see `listSeparator`.

/// Opens the host's shape data dialog.
inline constexpr const char* shapeDataAction = "= docmd(1312)";
/// Queues the marker that opens the hyperlink dialog.
std::string hyperlinkAction(std::string_view separator);
/// The caption while the add-in holds the document; empty without it, so that an entry without effect is not shown.
std::string menuWithAddin(std::string_view caption, std::string_view separator);
/// A formula that is 1 while the document does not allow defining.
std::string disabledFormula(std::string_view separator);

/// Writes the action and the caption's formula of a row of the menu (1-based).
void setAction(const Shape& shape, int row, std::string_view action, std::string_view menu);

/// The menu of a Process Connector, added to one that has none.
void addConnectorActions(const Shape& connector, std::string_view separator);

}  // namespace quorvel::addin
