#include "cli/open_drawing.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "cli/exit_codes.h"
#include "formats/formats.h"
#include "host/document_format.h"

namespace quorvel::cli {
namespace {

std::string lastRefusal(Session& session) {
  const auto refusals = session.host().refusals();
  return refusals.empty() ? "The host refused without a reason." : refusals.back().reason;
}

}  // namespace

OpenedDrawing openDrawing(const std::string& file) {
  OpenedDrawing opened;
  const host::OpenResult result = host::openFile(formats::allFormats(), opened.store, file);
  opened.document = result.document;
  opened.error = result.error;
  return opened;
}

Document newMap(Session& session, std::string& error) {
  if (session.installFolder().empty()) {
    error = "The template Quorvel.vstx was not found; set QUORVEL_HOME to the folder that holds it.";
    return {};
  }
  const Document map = session.app().Documents().Add(session.templatePath());
  if (!map) error = lastRefusal(session);
  return map;
}

std::string saveMap(Session& session, const Document& map, const std::string& file) {
  return map.SaveAs(file) ? std::string() : lastRefusal(session);
}

std::string refuseToOverwrite(const std::string& file, bool force) {
  std::error_code ignored;
  if (force || !std::filesystem::exists(file, ignored)) return {};
  return file + " exists already; choose another name, or add --force to replace it.";
}

int fail(const std::string& sentence) {
  std::cerr << sentence << '\n';
  return exitBadInput;
}

void endProcess(int exitCode) {
  std::cout.flush();
  std::_Exit(exitCode);
}

}  // namespace quorvel::cli
