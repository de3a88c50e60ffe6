// `quorvel new`: an empty process map.
#include <iostream>

#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"

namespace quorvel::cli {

int runNew(const NewOptions& options) {
  if (const std::string error = refuseToOverwrite(options.map, options.force); !error.empty()) return fail(error);
  Session session;
  std::string error;
  const Document map = newMap(session, error);
  if (map) error = saveMap(session, map, options.map);
  if (!error.empty()) return fail(error);
  std::cout << options.map << '\n';
  return exitDone;
}

}  // namespace quorvel::cli
