#include "session/session.h"

#include <cstdlib>
#include <filesystem>

#include "formats/formats.h"
#include "shapes/selection_marks.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

bool isInstallFolder(const fs::path& folder) {
  std::error_code ignored;
  return fs::exists(folder / "Quorvel.vstx", ignored);
}

host::EngineOptions engineOptions(const SessionOptions& options, const host::TextMetrics& metrics) {
  host::EngineOptions engine;
  engine.version = options.version;
  engine.formats = formats::allFormats();
  engine.textMetrics = &metrics;
  return engine;
}

}  // namespace

WithoutSelectionMarks::WithoutSelectionMarks(Session& session, const Document& document)
    : session_(session), document_(document) {
  const host::UndoLog::Attribution upkeep(session_.engine().undo(), true);
  addin::hideMarks(session_.addin(), document_);
}

WithoutSelectionMarks::~WithoutSelectionMarks() {
  const host::UndoLog::Attribution upkeep(session_.engine().undo(), true);
  addin::showMarks(session_.addin(), document_);
}

std::string findInstallFolder() {
  if (const char* home = std::getenv("QUORVEL_HOME"); home && *home) return home;
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  if (failed) return {};
  for (fs::path at = program.parent_path(); !at.empty(); at = at.parent_path()) {
    for (const char* candidate : {"share/quorvel", "data"}) {
      if (isInstallFolder(at / candidate)) return (at / candidate).string();
    }
    if (at == at.root_path()) break;
  }
  return {};
}

Session::Session(SessionOptions options)
    : installFolder_(options.installFolder.empty() ? findInstallFolder() : options.installFolder),
      host_(engineOptions(options, metrics_)),
      platform_(installFolder_, options.configurationFolder, host_.engine().bars()),
      addin_(platform_),
      recovery_(options.recoveryFolder.empty()
                    ? nullptr
                    : std::make_unique<RecoveryCopies>(host_.engine(), options.recoveryFolder)) {
  engine().setThemes(&themes_);
  engine().setLinkOpener(&linkOpener_);
  engine().setReportsDialog(&reportsDialog_);
  if (options.connectAddin) addin_.AddinInstance_OnConnection(app());
}

Session::~Session() { addin_.AddinInstance_OnDisconnection(); }

}  // namespace quorvel
