// How many Tasks a page or a selection holds.
#pragma once

#include <span>

#include "model/host_model.h"

namespace quorvel::addin {

/// How many of the shapes, those of a page or a selection, are Tasks. Members of groups are not counted.
int TaskCount(std::span<const Shape> shapes);

/// Is there exactly one Task on the page? As TaskCount, but ends at the second one: a drop must not cost more
/// on a page of many Tasks.
bool isOnlyTaskOnPage(const Page& page);

}  // namespace quorvel::addin
