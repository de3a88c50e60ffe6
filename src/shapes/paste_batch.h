// A paste is everything that is added between two selection changes; its questions are asked once.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called when the selection of a window has changed that shows a foreground page of the document: shapes that
/// are added after this are a new batch. Does nothing outside of maps.
void beginPasteBatch(dsrVisioConnect& connect, const Window& window, const Document& document);

/// To be called before a question of a paste is asked or an earlier answer is used: answers for one drawing are not
/// used in another.
void joinPasteBatch(dsrVisioConnect& connect, const Document& document);

}  // namespace quorvel::addin
