// A Connect element as we write it.
#pragma once

#include <string>

#include "host/sheet/store.h"

namespace quorvel::formats {

std::string connectText(const host::Connect& connect);

}  // namespace quorvel::formats
