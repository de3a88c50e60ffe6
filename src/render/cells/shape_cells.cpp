#include "render/cells/shape_cells.h"

#include <algorithm>
#include <cmath>

namespace quorvel::render {

int ShapeCells::integer(const host::CellKey& key, int fallback) const {
  const double number = this->number(key, fallback);
  return std::isfinite(number) ? static_cast<int>(std::lround(std::clamp(number, -1e9, 1e9))) : fallback;
}

double ShapeCells::heldNumber(const host::CellKey& key, double otherwise) const {
  const host::FoundCell found = host::findCell(store_, sheet_, key);
  return found ? found.value->value.asNumber().or_(otherwise) : otherwise;
}

}  // namespace quorvel::render
