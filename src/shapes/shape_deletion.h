// A Task that hyperlinks point to is deleted: the user decides whether the links or the Task are kept.
#pragma once

#include <memory>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called before a shape is deleted, also when it is deleted together with others. When connectors or sub-task
/// boxes of its document link to it, the user is asked; after Yes these links are removed. The host can't cancel a
/// deletion, so after No an exact copy takes the place of the Task. Other shapes are ignored.
void gvsoApp_BeforeShapeDelete(dsrVisioConnect& connect, const Shape& shape);

}  // namespace quorvel::addin
