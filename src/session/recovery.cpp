#include "session/recovery.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

#include "base/profile_text.h"
#include "formats/package/atomic_file.h"
#include "host/cells/cell_name.h"
#include "host/commands/documents.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view section = "Recovery";
constexpr const char* companionEnding = ".recovery";
constexpr int patience = 20;  ///< a copy takes at most one part in twenty of the time

std::string contentsOf(const fs::path& file) {
  std::ostringstream contents;
  contents << std::ifstream(file, std::ios::binary).rdbuf();
  return contents.str();
}

/// Tells a process from a later one of the same number: the time that it started, in ticks since the machine did.
std::string startOfProcess(const std::string& process) {
  const std::string stat = contentsOf("/proc/" + process + "/stat");
  // The second field is the program's name in parentheses, which may hold anything.
  std::istringstream fields(stat.substr(std::min(stat.size(), stat.rfind(')') + 1)));
  std::string field;
  for (int number = 3; number <= 22; ++number)
    if (!(fields >> field)) return {};
  return field;
}

std::string thisProcess() { return std::to_string(::getpid()); }

/// Puts another value into a cell for as long as it stands, behind everybody's back.
class StandIn {
 public:
  StandIn(host::Sheet& sheet, std::string_view cell, host::Value value) {
    const auto key = host::parseCellName(cell);
    place_ = key ? sheet.findLocal(*key) : nullptr;
    if (!place_) return;
    kept_ = *place_;
    *place_ = host::Cell();
    place_->value = std::move(value);
  }
  ~StandIn() {
    if (place_) *place_ = std::move(*kept_);
  }
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;

 private:
  host::Cell* place_ = nullptr;
  std::optional<host::Cell> kept_;
};

std::string companionText(const host::Document& document) {
  std::string text;
  const auto put = [&](std::string_view key, std::string_view value) {
    if (const auto with = withProfileValue(text, section, key, value)) text = *with;
  };
  put("Name", document.name);
  put("Original", document.path.empty() ? std::string() : document.path + document.name);
  put("Process", thisProcess());
  put("Started", startOfProcess(thisProcess()));
  return text;
}

}  // namespace

std::string writeCopyAside(host::Engine& engine, host::DocumentId id, const std::string& fileName) {
  const host::Document* document = engine.store.document(id);
  if (!document) return fileName + " was not written: the document is gone.";
  const StandIn addinIsMissing(*engine.store.sheet(document->sheet), "User.AddinIsFound", host::Value::number(0));
  const host::Outcome written = host::writeCopy(engine, id, fileName);
  return written.reason();
}

RecoveryCopies::RecoveryCopies(host::Engine& engine, std::string folder, std::chrono::seconds interval)
    : engine_(engine),
      folder_(std::move(folder)),
      interval_(interval),
      due_(std::chrono::steady_clock::now() + interval) {
  engine_.undo.onStep = [this] { updateWhenDue(); };
}

RecoveryCopies::~RecoveryCopies() {
  engine_.undo.onStep = nullptr;
  for (const auto& [document, copy] : copies_) discardCopy(copy.file);
}

void RecoveryCopies::updateWhenDue() {
  const auto start = std::chrono::steady_clock::now();
  if (start < due_) return;
  update();
  const auto end = std::chrono::steady_clock::now();
  due_ = end + std::max(interval_, (end - start) * patience);
}

void RecoveryCopies::update() {
  std::erase_if(copies_, [&](const auto& each) {
    const host::Document* document = engine_.store.document(each.first);
    if (document && !document->saved) return false;
    discardCopy(each.second.file);
    return true;
  });
  for (const host::DocumentId id : engine_.store.documents())
    if (const host::Document& document = *engine_.store.document(id); !document.saved) write(id, document);
}

void RecoveryCopies::write(host::DocumentId id, const host::Document& document) {
  const std::uint64_t changeCount = engine_.undo.changeCount(id);
  const auto known = copies_.find(id);
  if (known != copies_.end() && known->second.changeCount == changeCount) return;
  std::error_code failed;
  fs::create_directories(folder_, failed);
  const fs::path name(document.name);
  // A document that was never saved has no ending, and one of a kind that is only read can't be written back.
  const bool canBeWritten = host::formatFor(engine_.formats, document.name) != nullptr;
  const std::string ending = canBeWritten ? name.extension().string() : ".vsdx";
  const std::string file =
      (fs::path(folder_) / (name.stem().string() + " " + thisProcess() + "-" + std::to_string(id.value) + ending))
          .string();
  if (const std::string wrong = writeCopyAside(engine_, id, file); !wrong.empty()) {
    lastError = wrong;
    return;
  }
  if (const std::string wrong = formats::replaceFile(file + companionEnding, companionText(document)); !wrong.empty())
    lastError = file + companionEnding + " " + wrong + ".";
  // Saved under another name since the last copy.
  if (known != copies_.end() && known->second.file != file) discardCopy(known->second.file);
  copies_[id] = {file, changeCount};
}

std::vector<LeftBehind> copiesLeftBehind(const std::string& folder) {
  std::vector<LeftBehind> found;
  std::error_code failed;
  for (fs::directory_iterator each(folder, failed), end; !failed && each != end; each.increment(failed)) {
    if (each->path().extension() != companionEnding) continue;
    const std::string companion = contentsOf(each->path());
    const auto value = [&](std::string_view key) { return profileValue(companion, section, key).or_({}); };
    const std::string process = value("Process"), started = value("Started");
    if (!process.empty() && !started.empty() && startOfProcess(process) == started) continue;
    const fs::path copy = fs::path(each->path()).replace_extension();
    std::error_code ignored;
    if (fs::exists(copy, ignored)) found.push_back({copy.string(), value("Original"), value("Name")});
  }
  std::ranges::sort(found, {}, &LeftBehind::copy);
  return found;
}

void discardCopy(const std::string& copy) {
  std::error_code ignored;
  fs::remove(copy, ignored);
  fs::remove(copy + companionEnding, ignored);
}

}  // namespace quorvel
