// The host's Insert menu while a map is active: its hyperlink item opens the add-in's dialog, and there is an item for
// the date of the last save.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

// Each does nothing for a release whose items are not known.

void overWriteHyperlinkBtnFn(const dsrVisioConnect& connect);
/// Gives the item back to the host.
void resetHyperlinkBtnFn(const dsrVisioConnect& connect);

/// Adds the item when the menu lacks it.
void insertControlDocLastSave(const dsrVisioConnect& connect);
void deleteDocLastSave(const dsrVisioConnect& connect);

}  // namespace quorvel::addin
