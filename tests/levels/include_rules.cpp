#include "levels/include_rules.h"

#include <functional>
#include <sstream>
#include <utility>

namespace quorvel::levels {
namespace {

struct Include {
  std::string name;
  bool quoted = false;  ///< "…" and not <…>
};

std::vector<Include> includesOf(const std::string& contents) {
  std::vector<Include> includes;
  std::istringstream lines(contents);
  for (std::string line; std::getline(lines, line);) {
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos || line.compare(start, 8, "#include") != 0) continue;
    const std::size_t open = line.find_first_of("\"<", start);
    if (open == std::string::npos) continue;
    const std::size_t close = line.find_first_of("\">", open + 1);
    includes.push_back({line.substr(open + 1, close - open - 1), line[open] == '"'});
  }
  return includes;
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash);
}

std::string topOf(const std::string& path) { return path.substr(0, path.find('/')); }

std::set<std::string> wordsOf(const std::string& text) {
  std::istringstream words(text);
  std::set<std::string> result;
  for (std::string word; words >> word;) result.insert(word);
  return result;
}

bool isFreeToAll(const std::string& header) {
  static const std::set<std::string> posix{"unistd.h",   "fcntl.h",     "sys/random.h",
                                           "sys/stat.h", "sys/types.h", "sys/wait.h"};
  return header.find_first_of("./") == std::string::npos || posix.contains(header);
}

/// The header and the source of a room are named by what they share.
std::string roomOf(const std::string& path) { return path.substr(0, path.rfind('.')); }

using Graph = std::map<std::string, std::set<std::string>>;

std::vector<std::string> circlesIn(const Graph& rooms) {
  std::vector<std::string> found;
  std::map<std::string, int> state;  // 1: on the way, 2: done
  std::vector<std::string> way;
  const std::function<void(const std::string&)> visit = [&](const std::string& room) {
    state[room] = 1;
    way.push_back(room);
    const auto exits = rooms.find(room);
    for (const std::string& next : exits == rooms.end() ? std::set<std::string>() : exits->second) {
      if (state[next] == 0) visit(next);
      if (state[next] != 1) continue;
      std::string circle = "rooms form a circle:";
      bool inside = false;
      for (const std::string& step : way) {
        inside = inside || step == next;
        if (inside) circle += " " + step + " ->";
      }
      found.push_back(circle + " " + next);
    }
    way.pop_back();
    state[room] = 2;
  };
  for (const auto& [room, exits] : rooms)
    if (state[room] == 0) visit(room);
  return found;
}

}  // namespace

Rules rulesIn(const std::string& page) {
  Rules rules;
  auto* table = &rules.folders;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("| ")) continue;
    const std::size_t middle = line.find('|', 1), end = line.rfind('|');
    const std::set<std::string> name = wordsOf(line.substr(1, middle - 1));
    if (name.contains("Folder")) {
      if (line.find("Headers of") != std::string::npos) table = &rules.libraries;
      continue;
    }
    if (end > middle && name.size() == 1) (*table)[*name.begin()] = wordsOf(line.substr(middle + 1, end - middle - 1));
  }
  return rules;
}

std::vector<std::string> offences(const Rules& rules, const Sources& sources) {
  std::vector<std::string> found;
  std::set<std::string> rooms;
  for (const auto& [folder, leave] : rules.folders)
    if (leave.contains("rooms")) rooms.insert(folder);

  Graph roomGraph;
  for (const auto& [path, contents] : sources) {
    const std::string folder = folderOf(path);
    const auto rule = rules.folders.find(folder);
    if (rule == rules.folders.end()) {
      found.push_back(path + " stands in a folder that src/README.md does not name");
      continue;
    }
    const std::set<std::string>& leave = rule->second;
    for (const auto& [name, quoted] : includesOf(contents)) {
      if (!quoted) {
        const auto libraries = rules.libraries.find(topOf(folder));
        const bool allowed = isFreeToAll(name) || leave.contains("everything") ||
                             (libraries != rules.libraries.end() &&
                              (libraries->second.contains(name) || libraries->second.contains(topOf(name))));
        if (!allowed) found.push_back(path + " must not include the library header " + name);
        continue;
      }
      const std::string target = folderOf(name);
      const bool toRoom = rooms.contains(target);
      if (target != folder && !leave.contains(target) && !leave.contains("everything") &&
          !(toRoom && leave.contains("rooms")))
        found.push_back(path + " must not include " + name);
      if (toRoom && rooms.contains(folder) && roomOf(name) != roomOf(path))
        roomGraph[roomOf(path)].insert(roomOf(name));
    }
  }
  for (const std::string& circle : circlesIn(roomGraph)) found.push_back(circle);
  return found;
}

}  // namespace quorvel::levels
