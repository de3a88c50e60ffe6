// `quorvel run`: a Python script that can import the module `quorvel`. The command does not link Python.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"

extern char** environ;

namespace quorvel::cli {
namespace {

namespace fs = std::filesystem;

/// The folder that holds the package, next to or above the program's own; empty when the interpreter must find it.
fs::path moduleFolder() {
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  for (fs::path at = program.parent_path(); !failed && !at.empty(); at = at.parent_path()) {
    for (const char* candidate : {"python", "lib/quorvel/python"}) {
      std::error_code ignored;
      if (fs::exists(at / candidate / "quorvel" / "__init__.py", ignored)) return at / candidate;
    }
    if (at == at.root_path()) break;
  }
  return {};
}

/// Interpreters to try: the requested one, the release that the module was built for, and the default one.
std::vector<std::string> interpreters(const fs::path& module) {
  if (const char* asked = std::getenv("QUORVEL_PYTHON"); asked && *asked) return {asked};
  std::vector<std::string> names;
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(module / "quorvel", ignored)) {
    // Such as _quorvel.cpython-311-x86_64-linux-gnu.so.
    const std::string file = entry.path().filename().string();
    constexpr std::string_view mark = ".cpython-3";
    const std::size_t at = file.find(mark);
    const std::size_t end = at == std::string::npos ? at : file.find('-', at + mark.size());
    if (end != std::string::npos) names.push_back("python3." + file.substr(at + mark.size(), end - at - mark.size()));
  }
  names.push_back("python3");
  return names;
}

enum class Fitness { Fits, LacksModule, NotThere };

/// Whether the interpreter exists and can import the module. Prints nothing.
Fitness fitnessOf(const std::string& interpreter) {
  std::string program = interpreter, option = "-c", code = "import quorvel";
  char* arguments[] = {program.data(), option.data(), code.data(), nullptr};
  posix_spawn_file_actions_t quiet;
  posix_spawn_file_actions_init(&quiet);
  posix_spawn_file_actions_addopen(&quiet, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&quiet, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int failed = posix_spawnp(&child, program.c_str(), &quiet, nullptr, arguments, environ);
  posix_spawn_file_actions_destroy(&quiet);
  if (failed) return Fitness::NotThere;
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  constexpr int notFound = 127;
  if (WIFEXITED(status) && WEXITSTATUS(status) == notFound) return Fitness::NotThere;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? Fitness::Fits : Fitness::LacksModule;
}

}  // namespace

int runScript(const std::vector<std::string>& scriptAndArguments) {
  const std::string& script = scriptAndArguments.front();
  std::error_code ignored;
  if (!fs::is_regular_file(script, ignored)) return fail(script + " is no script that can be read.");

  const fs::path module = moduleFolder();
  if (!module.empty()) {
    const char* before = std::getenv("PYTHONPATH");
    const std::string path = module.string() + (before && *before ? ":" + std::string(before) : std::string());
    setenv("PYTHONPATH", path.c_str(), 1);
  }
  bool anyThere = false;
  for (std::string interpreter : interpreters(module)) {
    const Fitness fitness = fitnessOf(interpreter);
    anyThere = anyThere || fitness != Fitness::NotThere;
    if (fitness != Fitness::Fits) continue;
    std::vector<std::string> texts = scriptAndArguments;
    std::vector<char*> arguments{interpreter.data()};
    for (std::string& text : texts) arguments.push_back(text.data());
    arguments.push_back(nullptr);
    execvp(interpreter.c_str(), arguments.data());
    return fail(interpreter + " could not be started: " + std::strerror(errno) + ".");
  }
  if (!anyThere) return fail("Python was not found; install it, or set QUORVEL_PYTHON to its program.");
  return fail("Python has no module quorvel that fits it; build or install the module, see the README.");
}

}  // namespace quorvel::cli
