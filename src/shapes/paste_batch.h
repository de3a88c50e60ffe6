// A paste is everything that is added between two selection changes; its questions are asked once.
#pragma once

#include <memory>
#include <utility>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// To be called when the selection of a window has changed that shows a foreground page of the document: shapes that
/// are added after this are a new batch. Does nothing outside of maps, and while shapes are being added: what their
/// handling does to the selection is no new paste.
void beginPasteBatch(dsrVisioConnect& connect, const Window& window, const Document& document);

/// To be called before a question of a paste is asked or an earlier answer is used: answers for one drawing are not
/// used in another.
void joinPasteBatch(dsrVisioConnect& connect, const Document& document);

/// The same for a copied shape, which becomes part of the batch. A batch is what is selected with the shape: the host
/// selects what it pastes. A shape that is not selected, as in a drawing without a window, is a batch of its own.
void joinPasteBatch(dsrVisioConnect& connect, const Shape& copy, const Page& page);

/// Deletes all that was pasted with the shape. The hyperlinks to the originals stay, and nothing is asked about them.
void deletePastedShapes(dsrVisioConnect& connect);
/// The same for one shape.
void deleteRefusedShape(dsrVisioConnect& connect, const Shape& shape);

/// True when the page has no Tasks but those of the batch.
bool areAllTasksOfPage(const dsrVisioConnect& connect, const Page& page);

/// While it lives, a copied shape is handled. A script may paste other shapes meanwhile, in the middle of a question:
/// after each of these the batch that was interrupted goes on.
class HandledCopy {
 public:
  explicit HandledCopy(dsrVisioConnect& connect) : connect_(connect) {
    if (connect.copiesBeingHandled++ > 0) interrupted_ = std::make_unique<PasteBatch>(connect);
  }
  ~HandledCopy() {
    --connect_.copiesBeingHandled;
    PasteBatch& current = connect_;
    if (interrupted_) connect_.nestedBatch = std::exchange(current, std::move(*interrupted_));
  }
  HandledCopy(const HandledCopy&) = delete;
  HandledCopy& operator=(const HandledCopy&) = delete;

 private:
  dsrVisioConnect& connect_;
  std::unique_ptr<PasteBatch> interrupted_;
};

}  // namespace quorvel::addin
