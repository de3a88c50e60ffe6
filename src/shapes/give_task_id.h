// Gives a Task its ID when it comes to a page.
#pragma once

#include <string>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The page's letters and its next number.
void giveNextTaskId(dsrVisioConnect& connect, const Shape& task, const Page& page);

/// The same with another ID; the page's counter is increased by one all the same. False when it could not be: the Task
/// then has no ID, so that none is used twice.
bool giveCountedTaskId(dsrVisioConnect& connect, const Shape& task, const Page& page, const std::string& id);

/// Writes the ID and names the Task by it. Hyperlinks are not changed: none names this Task yet.
void writeFirstTaskId(dsrVisioConnect& connect, const Shape& task, const std::string& id);

}  // namespace quorvel::addin
