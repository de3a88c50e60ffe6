// What the shapes of the oldest drawings need before all else.
#pragma once

#include "model/host_model.h"

namespace quorvel::addin {

/// Tasks get the rows that keep the links of their roles, and keep those of their lines, with an arrow on each such
/// line.
void updateShapesBefore13(const Document& document);
/// Tasks lose their drop action, and logos are marked as added.
void updateShapesBefore16(const Document& document);

/// Keeps the links of a detail line in the Task, without their records: in the label of the row that has the line's
/// text, or in the row of the role.
void storeLineHyperlinks(const Shape& line, const Shape& task);

}  // namespace quorvel::addin
