// The cells of a Task that depend on its frequency and its completion time: the texts of the two labels in its band.
#pragma once

#include <string>

#include "model/host_model.h"

namespace quorvel::addin {

/// The separator between the abbreviation of a frequency and the completion time after it: ":" when the time is not 0,
/// else nothing.
std::string frequencySeparator(const Shape& task);

/// Prop.Frequency_Of_Occurrence has changed: Prop.Frequency_Partial gets the abbreviation and the separator. A
/// frequency that the Task's document does not list changes nothing. Of equal descriptions the last one is used,
/// without a separator.
void frequencyChanged(const Shape& task);

/// Prop.Task_Completion_Time has changed: sets Prop.Process_Time_Str and the separator, and writes the formula of a
/// time that is not 0 again. The write raises the event again; the second call changes nothing.
void completionTimeChanged(const Shape& task);

}  // namespace quorvel::addin
