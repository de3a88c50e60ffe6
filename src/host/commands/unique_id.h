// The unique ID of a shape: made when it is first asked for, and the same for the life of the shape.
#pragma once

#include <string>

#include "host/engine/engine.h"

namespace quorvel::host {

/// What to do with a shape's unique ID, by the published numbers.
enum class UniqueIdRequest { Get = 0, GetOrMake = 1, Delete = 2 };

struct UniqueIdOutcome {
  Outcome outcome = Outcome::done();
  std::string uniqueId;  ///< "{…}", 36 characters between the braces; empty: the shape has none
};

/// Making and deleting are steps of their own that can be undone. Refused for a sheet that is no shape.
UniqueIdOutcome uniqueIdOf(Engine& engine, SheetId shape, UniqueIdRequest request);

}  // namespace quorvel::host
