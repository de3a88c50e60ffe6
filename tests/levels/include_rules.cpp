#include "levels/include_rules.h"

#include <algorithm>
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

/// The header and the source of a unit are named by what they share.
std::string unitOf(const std::string& path) { return path.substr(0, path.rfind('.')); }

using Graph = std::map<std::string, std::set<std::string>>;

std::vector<std::string> cyclesIn(const Graph& units) {
  enum class State { New, OnPath, Done };
  std::vector<std::string> found;
  std::map<std::string, State> state;
  std::vector<std::string> path;
  const std::function<void(const std::string&)> visit = [&](const std::string& unit) {
    state[unit] = State::OnPath;
    path.push_back(unit);
    const auto included = units.find(unit);
    for (const std::string& next : included == units.end() ? std::set<std::string>() : included->second) {
      if (state[next] == State::New) visit(next);
      if (state[next] != State::OnPath) continue;
      std::string cycle = "units include each other in a cycle:";
      for (auto step = std::find(path.begin(), path.end(), next); step != path.end(); ++step)
        cycle += " " + *step + " ->";
      found.push_back(cycle + " " + next);
    }
    path.pop_back();
    state[unit] = State::Done;
  };
  for (const auto& [unit, included] : units)
    if (state[unit] == State::New) visit(unit);
  return found;
}

bool sees(const std::string& side, const std::string& other) {
  return side == other || other == "base" || side == "application";
}

}  // namespace

Rules rulesIn(const std::string& page) {
  Rules rules;
  bool inLibraries = false;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("| ")) continue;
    std::vector<std::string> cells;
    for (std::size_t start = 1; start < line.size();) {
      const std::size_t end = std::min(line.find('|', start), line.size());
      cells.push_back(line.substr(start, end - start));
      start = end + 1;
    }
    const std::set<std::string> name = wordsOf(cells[0]);
    if (name.contains("Folder")) {
      inLibraries = line.find("Headers of") != std::string::npos;
      continue;
    }
    if (cells.size() < 2 || name.size() != 1) continue;
    const std::set<std::string> words = wordsOf(cells[1]);
    if (inLibraries) {
      rules.libraries[*name.begin()] = words;
    } else if (words.size() == 1) {
      rules.folders.push_back({*name.begin(), *words.begin()});
    }
  }
  return rules;
}

std::vector<std::string> violations(const Rules& rules, const Sources& sources) {
  std::vector<std::string> found;
  std::map<std::string, std::size_t> places;
  for (const Folder& folder : rules.folders) places.emplace(folder.name, places.size());

  Graph units;
  for (const auto& [path, contents] : sources) {
    const std::string folder = folderOf(path);
    const auto place = places.find(folder);
    if (place == places.end()) {
      found.push_back(path + " is in a folder that src/README.md does not list");
      continue;
    }
    const std::string& side = rules.folders[place->second].side;
    for (const auto& [name, quoted] : includesOf(contents)) {
      if (!quoted) {
        const auto libraries = rules.libraries.find(topOf(folder));
        const bool allowed = isFreeToAll(name) || side == "application" ||
                             (libraries != rules.libraries.end() &&
                              (libraries->second.contains(name) || libraries->second.contains(topOf(name))));
        if (!allowed) found.push_back(path + " must not include the library header " + name);
        continue;
      }
      const auto target = places.find(folderOf(name));
      if (target == places.end() || target->second > place->second || !sees(side, rules.folders[target->second].side)) {
        found.push_back(path + " must not include " + name);
      }
      if (unitOf(name) != unitOf(path)) units[unitOf(path)].insert(unitOf(name));
    }
  }
  for (const std::string& cycle : cyclesIn(units)) found.push_back(cycle);
  return found;
}

}  // namespace quorvel::levels
