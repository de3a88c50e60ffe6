// Hyperlinks to Tasks follow when the Tasks get other IDs.
#pragma once

#include "links/id_changes.h"
#include "model/host_model.h"

namespace quorvel::addin {

/// Rewrites the hyperlinks of one shape of a page: the first one of a Process Connector; of a Task its own, those of
/// its detail lines and the first one of its sub-task box. The ID that a connector or box shows follows unless the user
/// typed another. Nothing for other shapes.
void followIdChanges(const Shape& shape, const IdChanges& changes);

}  // namespace quorvel::addin
