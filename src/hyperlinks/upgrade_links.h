// Hyperlinks of older drawings: they get their records, and the Task that they lead to.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// Gives each link of the shape that lacks it a record, by its address alone. Links to drawings lose the escapes in
/// their sub-address; those to documents get the sub-address as bookmark in the address.
void updateHyperLinkTask(const Shape& shape);
/// The same for the text in which a Task keeps the links of a line that is not drawn. Unchanged when it has records.
std::string keptLinksWithRecords(const std::string& text);

/// Sub-addresses of old drawings hold a page alone. The first link of a Process Connector (cell
/// "Prop.Connecting_TaskID") or of a sub-task box ("Prop.Linked") gets the Task ID that the cell shows, once for each
/// Task that has it. A sub-address with a "/" has its Task already.
/// The stored ID becomes the one that the link leads to. Nothing for another cell.
void setSubAddress(const Shape& shape, std::string_view cellName);

}  // namespace quorvel::addin
