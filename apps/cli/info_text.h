// What `quorvel info` prints for people and for programs.
#pragma once

#include <string>

#include "report/process_map.h"

namespace quorvel::cli {

std::string infoText(const report::ProcessMap& map, const std::string& file);
/// One JSON object; times are a value and a unit.
std::string infoJson(const report::ProcessMap& map, const std::string& file);

}  // namespace quorvel::cli
