// Checks that must hold for all bytes; a failed check stops the target and keeps its input.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace quorvel::fuzz {

inline void check(bool holds, const std::string& promise) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", promise.c_str());
  std::abort();
}

}  // namespace quorvel::fuzz
