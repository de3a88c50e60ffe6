// The command that edits the hyperlinks of what is selected.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Shows the hyperlink dialog for the active window's selection. In a drawing that was never saved the user is told
/// first that it should be.
void editHyperlinks(dsrVisioConnect& connect);

}  // namespace quorvel::addin
