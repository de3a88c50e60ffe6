// A Task's guidelines and resources are each one text joined by ";"; the single entries are in rows of their own.
#pragma once

#include "connect/dsr_visio_connect.h"
#include "schema/details.h"

namespace quorvel::addin {

/// Spreads the list over the rows of its details and draws the lower fields. Further entries are left out of the rows.
void spreadList(const dsrVisioConnect& connect, const Shape& task, const schema::DetailList& list);

}  // namespace quorvel::addin
