#include "render/cells/cell_keys.h"

namespace quorvel::render {

const ObjectKeys& objectKeys() {
  static const ObjectKeys keys;
  return keys;
}

const ColumnKeys& columnKeys() {
  static const ColumnKeys keys;
  return keys;
}

}  // namespace quorvel::render
