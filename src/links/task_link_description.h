// Writes the text that a Task Link shows, from its description, its time and its switches.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Writes User.Single_TaskLink, the description as a number format can hold it.
void replaceSingleQoutes(const Shape& link);

/// Writes User.Single_TaskLink, and Fields.Format[1] from the lists of the link's drawing. The old format stays when
/// the host refuses the new one or the drawing has no such lists.
void GetAddedTaskLinkDescription2(const Shape& link);

}  // namespace quorvel::addin
