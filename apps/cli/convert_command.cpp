// `quorvel convert`: a drawing in the format of the new name's ending. What it leaves out is reported in one line on
// standard error.
#include <iostream>

#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"
#include "formats/formats.h"

namespace quorvel::cli {

int runConvert(const ConvertOptions& options) {
  const host::DocumentFormat* const format = formats::formatFor(options.output);
  if (!format)
    return fail(options.output +
                " has no ending of a drawing; end its name with .vsdx, .vssx, .vstx, .vdx, .vsx or .vtx.");
  if (const std::string error = refuseToOverwrite(options.output, options.force); !error.empty()) return fail(error);
  const OpenedDrawing drawing = openDrawing(options.file);
  if (!drawing.error.empty()) return fail(drawing.error);
  const std::string error = format->save(drawing.store, drawing.document, options.output);
  if (!error.empty()) return fail(error);
  std::string what;
  const std::vector<std::string> leftOut =
      formats::leftOutBySave(*drawing.store.document(drawing.document), options.output);
  for (std::size_t i = 0; i < leftOut.size(); ++i)
    what += (i == 0 ? "" : i + 1 == leftOut.size() ? " and " : ", ") + leftOut[i];
  if (!what.empty()) std::cerr << options.output << " leaves out " << what << " of " << options.file << ".\n";
  std::cout << options.output << '\n';
  endProcess(exitDone);
}

}  // namespace quorvel::cli
