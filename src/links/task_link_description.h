// Keeps the text that a Task Link shows in step with its description, its time and its switches.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Renews User.Single_TaskLink, the description as a format picture can hold it.
void replaceSingleQoutes(const Shape& link);

/// Renews User.Single_TaskLink and composes Fields.Format[1] from the lists of the link's drawing. A format that the
/// host refuses, and a drawing without these lists, leave the old one.
void GetAddedTaskLinkDescription2(const Shape& link);

}  // namespace quorvel::addin
