// What `quorvel info` prints for people and for programs.
#pragma once

#include <string>

#include "report/map_summary.h"

namespace quorvel::cli {

std::string infoText(const report::MapSummary& summary, const std::string& file);
/// One JSON object; times are a value and a unit.
std::string infoJson(const report::MapSummary& summary, const std::string& file);

}  // namespace quorvel::cli
