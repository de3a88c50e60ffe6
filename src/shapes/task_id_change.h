// A Task has another ID: the hyperlinks that name the old one follow.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called when Prop.Task_ID of a Task has changed. The Task's name still holds the old ID; it gets the new one.
/// All hyperlinks of the Task's document that name the old ID, on whatever page, name the new one, and what shows it
/// follows unless the user typed another. Links from other drawings are not reached.
void taskIdChanged(const dsrVisioConnect& connect, const Shape& task);

}  // namespace quorvel::addin
