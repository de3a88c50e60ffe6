#include "sheets/protection.h"

namespace quorvel::addin {

void Protection(const Shape& shape) {
  for (const char* cell : {"resizeMode", "NoObjHandles", "LockMoveX", "LockMoveY", "lockHeight", "lockBegin", "lockEnd",
                           "lockTextEdit", "LockDelete"}) {
    shape.Cells(cell).FormulaForce("1");
  }
}

}  // namespace quorvel::addin
