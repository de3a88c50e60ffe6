// The texts of a hyperlink row: the record in its Frame column, the sub-address and the zoom.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// The kinds of links as the record spells them. Letter case counts.
namespace linkKinds {
inline constexpr std::string_view task = "Task", document = "Document", program = "program", webPage = "WebPage",
                                  email = "Email";
}

/// Whether the link's address is relative to the folder of the drawing. Empty for web pages and mail addresses.
namespace pathKinds {
inline constexpr std::string_view relative = "Rel", absolute = "Abs";
}

/// A field of the record by name: "hyperLinkType", "relOrAbs", "absPath" or "docName". The fields are joined by "+" and
/// nothing is escaped: empty fields are skipped and a "+" in a path shifts those after it. Empty for another name.
std::string getTypeOfHyperLink(std::string_view field, std::string_view record);
/// The four fields joined.
std::string linkRecord(std::string_view kind, std::string_view relOrAbs, std::string_view absPath,
                       std::string_view docName);

/// A part of a sub-address by name: "pageName" or "taskName". Empty for another name.
std::string getSubAdd(std::string_view field, std::string_view subAddress);

/// The choices for the zoom of the target page, in the order of the list.
inline constexpr std::string_view defaultZoom = "Default Zoom";
inline constexpr std::array<std::string_view, 9> zoomChoices{"400%", "200%", "150%",  "100%",     "75%",
                                                             "50%",  "Page", "width", defaultZoom};
/// The number for a choice, in any letter case; empty for the default and for any other text.
std::string zoomToExtraInfo(std::string_view choice);
/// What the ExtraInfo column holds for a choice: "zoom=" and its number, or nothing.
std::string zoomText(std::string_view choice);
/// The choice for what follows "zoom=", as it is shown: "Page", "Width", the default for an empty text, or the text and
/// "%".
std::string shownZoom(std::string_view number);
/// The same for an ExtraInfo column. Its first five characters are skipped, whatever they are.
std::string zoomChoiceOf(std::string_view extraInfo);

/// " ", "<" and ">" as "%20", "%3c" and "%3e", and the other way round. Only rows of older drawings hold such texts.
std::string getPageTaskName(std::string_view name);
std::string getPageTaskNamWithSpace(std::string_view name);

/// The name of the last Task of the drawing that has this description; empty when there is none.
std::string getTaskName(const std::string& taskDescription, const Document& document);

/// True for an empty address, and for one that has an "@" and a "." after it.
bool isValidEmail(std::string_view address);

}  // namespace quorvel::addin
