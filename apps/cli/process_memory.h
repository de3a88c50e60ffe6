// How this process asks the system for memory.
#pragma once

namespace quorvel::cli {

/// For a command that lives for a moment: memory once taken is kept until the end, and taken in large pieces. To be
/// called before anything large is made. Where the system has no such means, nothing happens.
void prepareProcessMemory();

}  // namespace quorvel::cli
