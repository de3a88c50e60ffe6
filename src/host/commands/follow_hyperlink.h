// Following a hyperlink: to a page or shape of an open drawing, to a drawing that is opened for it, or out of the
// drawings through the engine's LinkOpener.
#pragma once

#include <string>

#include "host/engine/engine.h"

namespace quorvel::host {

/// The columns of a hyperlink's row that say where it leads.
struct HyperlinkTarget {
  std::string address;     ///< empty: the drawing that holds the link; relative to its HyperlinkBase or folder
  std::string subAddress;  ///< a page's name, or that, "/" and a shape's name
  std::string extraInfo;   ///< "zoom=150", "zoom=-1" the whole page, "zoom=-2" its width; else the zoom stays
  bool newWindow = false;
};

/// What is shown changes, never the drawing: no undo step, no mark of a change. The events are those of a user who
/// activates the window, turns the page and selects the shape. Refused, with nothing shown, when the page, the shape or
/// the file does not exist, cannot be read or cannot be opened.
Outcome followHyperlink(Engine& engine, DocumentId holder, const HyperlinkTarget& link);

}  // namespace quorvel::host
