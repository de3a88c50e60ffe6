// The property parts of a package: title and times, template and company, custom properties.
#pragma once

#include <string>
#include <string_view>

#include "host/sheet/store.h"

namespace quorvel::formats {

/// Each takes the part's XML into the properties. Empty when it went well; else what is wrong with the part.
std::string readCoreProperties(std::string xml, host::DocumentProperties& properties);
std::string readApplicationProperties(std::string xml, host::DocumentProperties& properties);
std::string readCustomProperties(std::string xml, host::DocumentProperties& properties);

/// Each gives the part as it was with what changed put in; `xml` empty makes a new one. Empty when there is nothing to
/// say.
std::string writeCoreProperties(const std::string& xml, const host::DocumentProperties& properties);
std::string writeApplicationProperties(const std::string& xml, const host::Store& store,
                                       const host::Document& document);
std::string writeCustomProperties(const std::string& xml, const host::DocumentProperties& properties);

}  // namespace quorvel::formats
