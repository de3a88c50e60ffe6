// The ID that a Process Connector shows, and its text.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

namespace connectorCallers {
inline constexpr std::string_view cellChange = "CellChange", renumberTask = "RenumberTask";
}

/// Makes the connector show its target: by its first hyperlink for "CellChange", or `newId` for "RenumberTask", which
/// may be in quotation marks as in a formula. An ID that the user typed remains, and only the stored one follows.
/// Nothing for another caller and for other shapes.
void changeProcessConnectorText(const Shape& shape, std::string_view caller, const std::string& newId);

/// Makes the text "Connector." and a field that shows the ID. Nothing when it is so already.
void restoreConnectorText(const Shape& connector);

/// What a connector that shows this ID has as its text and as its name.
std::string connectorText(std::string_view id);

/// The letters are smaller for a longer ID.
void changeProcessConnectorTxtFont(const Shape& connector);

/// Adds the stored ID, with the value of the shown one, when the connector itself lacks the row.
void addStoredTaskId(const Shape& connector);

}  // namespace quorvel::addin
