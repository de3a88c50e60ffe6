// The rows in which the hyperlink dialog holds links, and reading the links of a shape into such rows.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/host_model.h"

namespace quorvel::addin {

/// The columns of a row by index.
namespace linkColumns {
enum Column : std::size_t {
  description,
  location,   ///< the address as the dialog shows it
  newWindow,  ///< "True" or "False"
  kind,
  page,          ///< of documents and web pages the bookmark
  task,          ///< its ID
  zoom,          ///< as in the ExtraInfo column
  relOrAbs,      ///< whether the address is relative
  absolutePath,  ///< of the target; the folder alone in rows that appendListRow made
  relativePath,  ///< of the target as seen from the drawing; never written to a shape
  documentName,  ///< file name of the target
  state,
};
}  // namespace linkColumns
inline constexpr std::array<std::string_view, 12> linkColumnTitles{
    "Description", "Location", "OpenPageInNewWindow", "hyperLink_type", "PageName",     "TaskName",
    "Zoom",        "Relative", "AbsolutePath",        "RelativePath",   "documentName", "saved"};

/// The state of a row: read from a shape, new, edited, written to the shapes.
namespace linkStates {
inline constexpr std::string_view read = "saved", added = "New", edited = "Edit", written = "Saved";
}

/// A text for each column.
using LinkRow = std::array<std::string, linkColumnTitles.size()>;

/// The links of a shape in their order; a link without a record of a known kind is left out. `document` is the shape's.
/// `offersRelative` says whether paths relative to the drawing are offered.
std::vector<LinkRow> readLinks(const Shape& shape, const Document& document, bool offersRelative);

}  // namespace quorvel::addin
