#include "connect/host_commands.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "connect/host_queries.h"

namespace quorvel::addin {
namespace {

struct OfRelease {
  std::string_view release;
  HostCommands commands;
};
constexpr std::array<OfRelease, 3> releases{
    {{"2002", {8, 30007, 6}}, {"2003", {10, 30007, 11}}, {"2007", {6, 50244, 8}}}};

}  // namespace

HostCommands hostCommandsOf(const dsrVisioConnect& connect) {
  const auto found = std::ranges::find(releases, getVisioVersion(connect), &OfRelease::release);
  return found == releases.end() ? HostCommands() : found->commands;
}

}  // namespace quorvel::addin
