// The DocumentProperties element: title and times, template and company, custom properties.
#pragma once

#include <string>

#include "formats/package/xml_reading.h"
#include "host/sheet/store.h"

namespace quorvel::formats::vdx {

void readProperties(pugi::xml_node node, host::DocumentProperties& properties);

/// The element as it was with what changed put in; `before` empty makes a new one. Empty when there is nothing to say.
std::string writeProperties(const std::string& before, const host::DocumentProperties& properties);

}  // namespace quorvel::formats::vdx
