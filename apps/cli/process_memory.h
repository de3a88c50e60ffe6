// How this process asks the system for memory.
#pragma once

namespace quorvel::cli {

/// For a short-lived command: freed memory is kept until the end, and memory is requested in large pieces. To be
/// called before anything large is made. Where the system has no such means, nothing happens.
void prepareProcessMemory();

}  // namespace quorvel::cli
