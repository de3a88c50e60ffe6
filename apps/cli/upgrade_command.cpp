// `quorvel upgrade`: brings older maps to the cells that maps have now, by opening them with the add-in, and writes
// them. A file that cannot be done is reported, and the others are done.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

#include "base/basic_text.h"
#include "base/text.h"
#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"
#include "cli/upgrade_changes.h"
#include "document/document_opened.h"
#include "formats/package/atomic_file.h"
#include "host/cells/cell_name.h"
#include "host/sheet/inheritance.h"
#include "report/process_map.h"
#include "schema/cells.h"

namespace quorvel::cli {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

enum class Outcome { Upgraded, Current, NoMap, Failed };
constexpr const char* outcomeNames[] = {"upgraded", "current", "noMap", "failed"};

struct Result {
  std::string file;
  Outcome outcome = Outcome::Failed;
  std::string from, to;              ///< versions
  std::vector<PageChanges> changes;  ///< one for each changed page
  std::string written, backup;       ///< files; empty: none was written
  std::string error;                 ///< one sentence
};

/// The drawings that a command line names: files as they are, and those of folders and their subfolders, in the order
/// of their names. Each once.
std::vector<std::string> drawingsOf(const std::vector<std::string>& arguments) {
  std::vector<std::string> files;
  std::set<fs::path> seen;
  const auto add = [&](const fs::path& file) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(file, error);
    if (seen.insert(error ? file : whole).second) files.push_back(file.string());
  };
  for (const std::string& argument : arguments) {
    std::error_code error;
    if (!fs::is_directory(argument, error)) {
      add(argument);
      continue;
    }
    std::set<fs::path> inFolder;
    auto at = fs::recursive_directory_iterator(argument, fs::directory_options::skip_permission_denied, error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
      const std::string ending = foldCase(at->path().extension().string());
      std::error_code ignored;
      if ((ending == ".vsdx" || ending == ".vdx") && at->is_regular_file(ignored)) inFolder.insert(at->path());
    }
    for (const fs::path& file : inFolder) add(file);
  }
  return files;
}

/// "orders.vsdx" becomes "orders-upgraded.vsdx".
std::string besideOf(const std::string& file) {
  const fs::path path(file);
  return (path.parent_path() / (path.stem().string() + "-upgraded" + path.extension().string())).string();
}

/// "orders.vsdx.bak", or with a number when that exists: a backup is never replaced.
std::string backupOf(const std::string& file) {
  std::error_code ignored;
  std::string backup = file + ".bak";
  for (int n = 2; fs::exists(fs::symlink_status(backup, ignored)); ++n) backup = file + ".bak" + std::to_string(n);
  return backup;
}

/// Empty, or one sentence.
std::string copyFile(const std::string& from, const std::string& to) {
  std::ifstream in(from, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(in), {}};
  if (!in.good() && !in.eof()) return from + " could not be read for its backup.";
  const std::string error = formats::replaceFile(to, bytes);
  return error.empty() ? error : "The backup " + to + " " + error + ".";
}

std::string versionOf(const host::Store& store, host::DocumentId document) {
  const Maybe<host::CellKey> key = host::parseCellName(schema::documentCells::version.cell());
  const host::SheetId sheet = store.document(document)->sheet;
  return key && host::cellExists(store, sheet, *key, false) ? host::cellText(store, sheet, *key) : std::string();
}

class Upgrader {
 public:
  explicit Upgrader(const UpgradeOptions& options) : options_(options) {}

  /// Empty, or one sentence.
  std::string prepare() {
    // One map is open all the time: the toolbar is built and removed, and the user's settings are written, with the
    // first and the last map.
    std::string error;
    newMap(session_, error);
    return error;
  }

  Result upgrade(const std::string& file) {
    Result result;
    result.file = file;
    const OpenedDrawing before = openDrawing(file);
    if (!before.error.empty()) {
      result.error = before.error;
      return result;
    }
    const report::ProcessMap map = report::readProcessMap(before.store, before.document);
    result.from = versionOf(before.store, before.document);
    if (!map.isProcessMap || map.isStencil) {
      result.outcome = Outcome::NoMap;
      return result;
    }
    if (val(result.from) >= addin::currentVersion) {
      result.outcome = Outcome::Current;
      return result;
    }
    const Document document = session_.app().Documents().Open(file);
    if (!document) {
      result.error = file + " could not be opened: " + lastRefusal();
      return result;
    }
    const host::DocumentId id{document.ref().id};
    result.to = versionOf(session_.engine().store(), id);
    result.changes = changesBetween(before.store, before.document, session_.engine().store(), id);
    if (val(result.to) < addin::currentVersion) {
      result.error = file + " could not be brought up to date.";
    } else {
      write(document, result);
    }
    if (result.error.empty()) result.outcome = Outcome::Upgraded;
    document.Close();
    return result;
  }

 private:
  void write(const Document& document, Result& result) {
    if (options_.dryRun) return;
    const std::string target = options_.inPlace ? result.file : besideOf(result.file);
    if (!options_.inPlace) result.error = refuseToOverwrite(target, options_.force);
    std::string backup;
    if (result.error.empty() && options_.backup) result.error = copyFile(result.file, backup = backupOf(result.file));
    if (!result.error.empty()) return;
    result.backup = backup;
    if (!(options_.inPlace ? document.Save() : document.SaveAs(target))) {
      result.error = lastRefusal();
      return;
    }
    result.written = target;
  }

  std::string lastRefusal() {
    const auto refusals = session_.host().refusals();
    return refusals.empty() ? "The host refused without a reason." : refusals.back().reason;
  }

  const UpgradeOptions& options_;
  Session session_;
};

std::string counted(std::size_t count, const char* one, const char* several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

PageChanges total(const std::vector<PageChanges>& changes) {
  PageChanges all;
  for (const PageChanges& each : changes) {
    all.tasks.insert(all.tasks.end(), each.tasks.begin(), each.tasks.end());
    all.taskLinks += each.taskLinks;
    all.processConnectors += each.processConnectors;
    all.rowsAdded += each.rowsAdded;
    all.recordsAdded += each.recordsAdded;
  }
  return all;
}

std::string lineOf(const Result& result) {
  if (result.outcome == Outcome::NoMap) return result.file + ": no map";
  if (result.outcome == Outcome::Current) return result.file + ": version " + result.from + " already";
  const PageChanges all = total(result.changes);
  const auto number = [](int count) { return static_cast<std::size_t>(count); };
  return result.file + ": version " + (result.from.empty() ? "none" : result.from) + " to " + result.to + ", changed " +
         counted(result.changes.size(), "page", "pages") + ", " + counted(all.tasks.size(), "Task", "Tasks") + ", " +
         counted(number(all.taskLinks), "Task Link", "Task Links") + ", " +
         counted(number(all.processConnectors), "Process Connector", "Process Connectors") + "; " +
         counted(number(all.rowsAdded), "row", "rows") + " added; " +
         counted(number(all.recordsAdded), "hyperlink", "hyperlinks") + " got a record; " +
         (result.written.empty() ? "not written" : "written to " + result.written) +
         (result.backup.empty() ? "" : ", backup " + result.backup);
}

/// Null for an empty text.
Json textOrNull(const std::string& text) { return text.empty() ? Json() : Json(text); }

Json jsonOf(const Result& result) {
  const PageChanges all = total(result.changes);
  Json pages = Json::array();
  for (const PageChanges& each : result.changes)
    pages.push_back({{"page", each.page},
                     {"pageCells", each.pageCells},
                     {"tasks", each.tasks},
                     {"taskLinks", each.taskLinks},
                     {"processConnectors", each.processConnectors},
                     {"rowsAdded", each.rowsAdded},
                     {"recordsAdded", each.recordsAdded}});
  return {{"file", result.file},
          {"outcome", outcomeNames[static_cast<int>(result.outcome)]},
          {"fromVersion", textOrNull(result.from)},
          {"toVersion", textOrNull(result.to)},
          {"tasks", all.tasks.size()},
          {"taskLinks", all.taskLinks},
          {"processConnectors", all.processConnectors},
          {"rowsAdded", all.rowsAdded},
          {"recordsAdded", all.recordsAdded},
          {"pages", pages},
          {"written", textOrNull(result.written)},
          {"backup", textOrNull(result.backup)},
          {"error", textOrNull(result.error)}};
}

}  // namespace

int runUpgrade(const UpgradeOptions& options) {
  Upgrader upgrader(options);
  if (const std::string error = upgrader.prepare(); !error.empty()) return fail(error);
  std::size_t counts[std::size(outcomeNames)] = {};
  Json drawings = Json::array();
  const std::vector<std::string> files = drawingsOf(options.files);
  for (const std::string& file : files) {
    const Result result = upgrader.upgrade(file);
    ++counts[static_cast<int>(result.outcome)];
    if (!result.error.empty()) fail(result.error);
    if (options.json) {
      drawings.push_back(jsonOf(result));
    } else if (result.error.empty()) {
      // A long run shows what it has done.
      std::cout << lineOf(result) << std::endl;
    }
  }
  if (options.json) {
    const Json all{{"drawings", drawings},
                   {"upgraded", counts[0]},
                   {"current", counts[1]},
                   {"noMaps", counts[2]},
                   {"failed", counts[3]}};
    // Names in hostile files may be invalid UTF-8; such bytes are replaced.
    std::cout << all.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
  } else {
    std::cout << counted(files.size(), "drawing", "drawings") << ": " << counts[0]
              << (options.dryRun ? " to upgrade, " : " upgraded, ") << counts[1] << " current, "
              << counted(counts[2], "is no map", "are no maps") << ", " << counts[3] << " failed\n";
  }
  endProcess(counts[static_cast<int>(Outcome::Failed)] == 0 ? exitDone : exitBadInput);
}

}  // namespace quorvel::cli
