// The cells of a Task that follow its frequency and its completion time: the texts of the two labels in its band.
#pragma once

#include <string>

#include "model/host_model.h"

namespace quorvel::addin {

/// What joins the abbreviation of a frequency to the completion time behind it: ":" while the Task has one above or
/// below zero, else nothing.
std::string frequencyJoint(const Shape& task);

/// Prop.Frequency_Of_Occurrence has changed: Prop.Frequency_Partial takes the abbreviation and the joint. A frequency
/// that the Task's document does not list leaves it. Of equal descriptions the last one decides, without a joint.
void frequencyChanged(const Shape& task);

/// Prop.Task_Completion_Time has changed: sets Prop.Process_Time_Str and the joint, and gives a time that is not zero
/// its formula back. The write raises the change again; the second time there is nothing left to change.
void completionTimeChanged(const Shape& task);

}  // namespace quorvel::addin
