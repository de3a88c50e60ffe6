// Opening a drawing only to read it: there is neither a host nor the add-in, so that nothing in it changes, and what
// only an edit needs is not built.
#pragma once

#include <string>

#include "session/session.h"

namespace quorvel::cli {

struct OpenedDrawing {
  host::Store store;
  host::DocumentId document;
  std::string error;  ///< empty, or one sentence; then there is no document
};

OpenedDrawing openDrawing(const std::string& file);

/// A new map from the template, as a user makes one: the add-in prepares it. The handle is null on an error.
Document newMap(Session& session, std::string& error);
/// Saves the map. Empty, or one sentence.
std::string saveMap(Session& session, const Document& map, const std::string& file);
/// Empty when `file` may be written, else one sentence.
std::string refuseToOverwrite(const std::string& file, bool force);

/// Prints the sentence on standard error.
int fail(const std::string& sentence);

/// Flushes the output and ends the process. What a command read and made is left to the system: to free
/// the parts of a large drawing would make it up to 15 % slower.
[[noreturn]] void endProcess(int exitCode);

}  // namespace quorvel::cli
