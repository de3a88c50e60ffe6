// The kinds of shapes as files name them.
#pragma once

#include <string_view>

#include "base/maybe.h"
#include "host/sheet/sheet.h"

namespace quorvel::formats {

/// "Shape" for the kinds that files do not name.
std::string_view typeName(host::SheetKind kind);
/// Nothing for a name that we don't know.
Maybe<host::SheetKind> shapeKindOf(std::string_view typeName);

}  // namespace quorvel::formats
