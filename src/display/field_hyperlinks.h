// A detail line is deleted and redrawn at each change; its hyperlinks are kept as text in between.
#pragma once

#include <string>
#include <string_view>

#include "display/list_rows.h"
#include "model/host_model.h"

namespace quorvel::addin {

/// What is written of a hyperlink; the texts of the oldest drawings end before the frame.
enum class LinkParts { All, WithoutFrame };

/// Every hyperlink as ";", address, ",", description, ",", sub-address, ",", 0 or -1 for the default link, ",", frame.
/// One with a zoom or a window of its own has also ",", the zoom, ",", and 0 or -1 for the new window.
/// Nothing is escaped: drawings hold such texts, and a ";" or "," inside a link shifts its parts on reading.
/// Nothing when one of them can't be read.
Maybe<std::string> hyperlinksAsText(const Shape& line, LinkParts parts = LinkParts::All);

/// The text that the Task keeps for the line at this position of the table of details.
std::string keptHyperlinks(const Shape& task, int position);

/// Adds the hyperlinks that the text holds to the line.
void restoreHyperlinks(const Shape& line, std::string_view text);

/// To be called before a detail line is deleted. Hyperlinks of a list row go into its slot, those of a role into its
/// User row; without hyperlinks both are emptied, so that links that the user removed do not come back. When the line's
/// links can't be read, the text that is kept does not change. Icons and shapes that are no details are skipped.
void saveFieldHyperlinks(const Shape& subShape, ListRows& rows);

}  // namespace quorvel::addin
