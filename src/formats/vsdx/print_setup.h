// How a drawing of older releases is printed: they said it once for the document, packages say it for each page.
#pragma once

#include <string>

#include "host/sheet/sheet.h"

namespace quorvel::formats {

/// Gives the page's sheet the cells for what the PrintSetup element says, where it holds none of its own.
void takePrintSetup(std::string printSetup, host::Sheet& page);

}  // namespace quorvel::formats
