// `quorvel sample`: the sample map as a file.
#include <iostream>

#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"
#include "cli/sample_map.h"

namespace quorvel::cli {

int runSample(const SampleOptions& options) {
  if (const std::string error = refuseToOverwrite(options.map, options.force); !error.empty()) return fail(error);
  Session session;
  std::string error;
  const Document map = makeSampleMap(session, error);
  if (map) error = saveMap(session, map, options.map);
  if (!error.empty()) return fail(error);
  std::cout << options.map << '\n';
  return exitDone;
}

}  // namespace quorvel::cli
