// What must hold whatever the bytes are; a broken promise stops the target with the bytes that broke it.
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
