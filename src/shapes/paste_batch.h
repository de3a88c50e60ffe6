// A paste is everything that is added between two selection changes; its questions are asked once.
#pragma once

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// The selection has changed on a foreground page: what is added from now on is a batch of its own.
void beginPasteBatch(dsrVisioConnect& connect);

}  // namespace quorvel::addin
