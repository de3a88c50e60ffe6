// Texts that show cells are not typed over: the shape's text is a field, and the cell has its own way to be changed.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The user begins to edit the shape's text. Process Connectors, roles and sub-task boxes may be typed into, which is
/// undone afterwards; other detail lines keep their lock.
void gvsoApp_BeforeShapeTextEdit(const Shape& shape);

/// The edit has ended: a text that was typed over the field of such a shape becomes the field again, with a message,
/// and the shape is locked.
void gvsoApp_ShapeExitedTextEdit(dsrVisioConnect& connect, const Shape& shape);

}  // namespace quorvel::addin
