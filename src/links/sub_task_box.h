// The Task that a Task's sub-task box leads to, and the ID that the box shows.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Makes the box show the Task that its first hyperlink names. An ID that the user typed remains, and only the stored
/// one follows. Nothing without a hyperlink, and while it is being written and has no address yet.
void showLinkedTask(const Shape& task, const Shape& box);

}  // namespace quorvel::addin
