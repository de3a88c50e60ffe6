#include "sheets/protection.h"

#include "base/ask_again.h"

namespace quorvel::addin {

void Protection(const Shape& shape) {
  for (const char* cell : {"resizeMode", "NoObjHandles", "LockMoveX", "LockMoveY", "lockHeight", "lockBegin", "lockEnd",
                           "lockTextEdit", "LockDelete"}) {
    shape.Cells(cell).FormulaForce("1");
  }
}

bool deleteProtected(const Shape& shape) {
  // The lock holds for deletions by code too. The shape is deleted alone: with others, one that is locked keeps all.
  askAgain([&] { return shape.Cells("LockDelete").FormulaForce("0"); });
  return askAgain([&] { return shape.Delete(); });
}

}  // namespace quorvel::addin
