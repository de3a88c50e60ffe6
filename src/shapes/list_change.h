// A Task's guidelines and resources are each one text joined by ";"; the single entries are in rows of their own.
#pragma once

#include "connect/dsr_visio_connect.h"
#include "schema/details.h"

namespace quorvel::addin {

/// Writes the list's entries to the rows of its details and draws the lower fields. Further entries get no row.
void spreadList(const dsrVisioConnect& connect, const Shape& task, const schema::DetailList& list);

}  // namespace quorvel::addin
