// `quorvel info`: what a drawing holds.
#include <iostream>

#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/info_text.h"
#include "cli/open_drawing.h"

namespace quorvel::cli {

int runInfo(const InfoOptions& options) {
  const OpenedDrawing drawing = openDrawing(options.file);
  if (!drawing.error.empty()) return fail(drawing.error);
  const report::ProcessMap map = report::readProcessMap(drawing.store, drawing.document);
  std::cout << (options.json ? infoJson(map, options.file) : infoText(map, options.file));
  endProcess(exitDone);
}

}  // namespace quorvel::cli
