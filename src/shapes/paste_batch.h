// A paste is everything that is added between two selection changes; its questions are asked once.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// The selection of the window has changed, which shows a foreground page of the document: what is added from now on is
/// a batch of its own. Nothing outside of maps.
void beginPasteBatch(dsrVisioConnect& connect, const Window& window, const Document& document);

/// To be called before a question of a paste is asked or answered from memory: what was answered for one drawing does
/// not count in another.
void joinPasteBatch(dsrVisioConnect& connect, const Document& document);

}  // namespace quorvel::addin
