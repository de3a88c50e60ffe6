// Exit codes of the command.
#pragma once

namespace quorvel::cli {

inline constexpr int exitDone = 0;
/// The command line was not understood.
inline constexpr int exitUsage = 2;
/// A file could not be read or written; one sentence on standard error says why.
inline constexpr int exitBadInput = 3;

}  // namespace quorvel::cli
