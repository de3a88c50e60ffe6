// Keeps the text that a Task Link shows in step with its description, its time and its switches.
#pragma once

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// Renews User.Single_TaskLink, the description as a format picture can hold it.
void replaceSingleQoutes(const Shape& link);

/// Renews User.Single_TaskLink and composes Fields.Format[1]. A picture that the host refuses leaves the old one.
void GetAddedTaskLinkDescription2(const dsrVisioConnect& connect, const Shape& link);

}  // namespace quorvel::addin
