// The links of a drawing that may be defined once more for another shape.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/host_model.h"

namespace quorvel::addin {

/// A link as a list of links shows it. What its kind does not have is empty.
struct ExistingLink {
  std::string location;  ///< the address; of the drawing itself its name, or its full path where that is absolute
  std::string description;
  std::string page;       ///< of documents and web pages the bookmark
  std::string task;       ///< its ID
  std::string zoom;       ///< as in the ExtraInfo column; "Default Zoom" for none
  std::string relOrAbs;   ///< "A" or "R"
  std::string newWindow;  ///< "N" or "Y"
  std::string absPath, docName;
};

/// The links of one kind, as `linkKinds` spells it, on all Tasks with their detail lines and sub-task boxes and on all
/// Process Connectors, in the order of pages and shapes. Equal links are given once, but relative ones to the drawing
/// itself each time.
std::vector<ExistingLink> existingLinks(const Document& document, std::string_view kind);

}  // namespace quorvel::addin
