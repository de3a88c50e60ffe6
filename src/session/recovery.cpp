#include "session/recovery.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "base/profile_text.h"
#include "host/cells/cell_name.h"
#include "host/commands/documents.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view section = "Recovery";
constexpr const char* companionEnding = ".recovery";
constexpr int patience = 20;  ///< a copy takes at most one part in twenty of the time

/// Between the document's name and the random part of a copy's. No other file gets a name of this form.
constexpr std::string_view mark = " recovery-";
constexpr std::size_t randomLetters = 32;
/// A longer name is cut, so that the whole file name stays below 255 bytes.
constexpr std::size_t longestStart = 100;
constexpr std::size_t longestCompanion = 64 << 10;

/// 128 random bits; empty when the system has none.
std::string randomName() {
  unsigned char bytes[randomLetters / 2];
  if (::getrandom(bytes, sizeof bytes, 0) != static_cast<ssize_t>(sizeof bytes)) return {};
  std::string letters;
  for (const unsigned char byte : bytes) {
    letters += "0123456789abcdef"[byte >> 4];
    letters += "0123456789abcdef"[byte & 15];
  }
  return letters;
}

std::string cutAtLetter(std::string name, std::size_t most) {
  if (name.size() <= most) return name;
  while (most > 0 && (static_cast<unsigned char>(name[most]) & 0xC0) == 0x80) --most;
  return name.substr(0, most);
}

/// The document's name as it is in a copy's own name; missing for other files.
std::optional<std::string> nameOfCopy(const fs::path& copy) {
  const std::string stem = copy.stem().string();
  if (stem.size() < mark.size() + randomLetters) return {};
  const std::size_t at = stem.size() - mark.size() - randomLetters;
  const auto isRandom = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
  if (stem.compare(at, mark.size(), mark) != 0 || !std::ranges::all_of(stem.substr(at + mark.size()), isRandom))
    return {};
  if (copy.extension().empty() || copy.extension() == companionEnding) return {};
  return stem.substr(0, at) + copy.extension().string();
}

/// The current folder may be another one when a copy is written.
std::string absoluteName(const std::string& folder) {
  std::error_code failed;
  const fs::path absolute = fs::absolute(folder, failed);
  return failed ? folder : absolute.lexically_normal().string();
}

/// Folders that are missing are made for the user alone.
void makeFolder(const fs::path& folder) {
  std::error_code ignored;
  if (folder.empty() || fs::exists(folder, ignored)) return;
  makeFolder(folder.parent_path());
  ::mkdir(folder.c_str(), 0700);
}

/// The file itself, not what a link leads to.
bool isOwnFile(const std::string& file, struct stat& status) {
  return ::lstat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

std::string contentsOfCompanion(const std::string& file) {
  struct stat status;
  if (!isOwnFile(file, status)) return {};
  std::string contents(longestCompanion, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(contents.data(), static_cast<std::streamsize>(contents.size()));
  contents.resize(static_cast<std::size_t>(stream.gcount()));
  return contents;
}

/// Puts another value into a cell during its lifetime, without a step and without events.
class TemporaryValue {
 public:
  TemporaryValue(host::Sheet& sheet, std::string_view cell, host::Value value) {
    const auto key = host::parseCellName(cell);
    place_ = key ? sheet.findLocal(*key) : nullptr;
    if (!place_) return;
    kept_ = *place_;
    *place_ = host::Cell();
    place_->value = std::move(value);
  }
  ~TemporaryValue() {
    if (place_) *place_ = std::move(*kept_);
  }
  TemporaryValue(const TemporaryValue&) = delete;
  TemporaryValue& operator=(const TemporaryValue&) = delete;

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
  return text;
}

}  // namespace

std::string writeCopyAside(host::Engine& engine, host::DocumentId id, const std::string& fileName) {
  const host::Document* document = engine.store().document(id);
  if (!document) return fileName + " was not written: the document is closed.";
  const TemporaryValue addinIsMissing(*engine.edit().making().sheet(document->sheet), "User.AddinIsFound",
                                      host::Value::number(0));
  const host::Outcome written = host::writeCopy(engine, id, fileName);
  return written.reason();
}

RecoveryCopies::RecoveryCopies(host::Engine& engine, const std::string& folder, std::chrono::seconds interval)
    : engine_(engine),
      folder_(absoluteName(folder)),
      interval_(interval),
      due_(std::chrono::steady_clock::now() + interval) {
  engine_.undo().onStep = [this] { updateWhenDue(); };
  engine_.events().advise(*this);
}

RecoveryCopies::~RecoveryCopies() {
  engine_.events().unadvise(*this);
  engine_.undo().onStep = nullptr;
  removeSettled();
}

void RecoveryCopies::BeforeDocumentClose(Document document) {
  leaveToParent();
  const auto closing = copies_.find(host::DocumentId{document.ref().id});
  if (closing == copies_.end()) return;
  remove(closing->second);
  copies_.erase(closing);
}

void RecoveryCopies::updateWhenDue() {
  const auto start = std::chrono::steady_clock::now();
  if (start < due_) return;
  update();
  const auto end = std::chrono::steady_clock::now();
  due_ = end + std::max(interval_, (end - start) * patience);
}

void RecoveryCopies::leaveToParent() {
  if (forks_ == forksSoFar()) return;
  forks_ = forksSoFar();
  copies_.clear();
}

void RecoveryCopies::removeSettled() {
  leaveToParent();
  for (auto each = copies_.begin(); each != copies_.end();) {
    const host::Document* document = engine_.store().document(each->first);
    if (document && !document->saved) {
      ++each;
      continue;
    }
    remove(each->second);
    each = copies_.erase(each);
  }
}

/// The copy is removed first: what an interrupted removal leaves is then no copy.
void RecoveryCopies::remove(Copy& copy) {
  ::unlink(copy.file.c_str());
  ::unlink((copy.file + companionEnding).c_str());
  copy.companion.reset();
}

void RecoveryCopies::update() {
  removeSettled();
  for (const host::DocumentId id : engine_.store().documents())
    if (const host::Document& document = *engine_.store().document(id); !document.saved) write(id, document);
}

/// Makes the files of a copy, the companion first: it is locked before the copy exists.
std::string RecoveryCopies::make(Copy& copy) const {
  makeFolder(folder_);
  const std::string random = randomName();
  copy.file = (fs::path(folder_) / (copy.start + std::string(mark) + random + copy.ending)).string();
  if (random.empty()) return copy.file + " was not written: the system gives no random numbers.";
  const std::string companion = copy.file + companionEnding;
  std::string wrong;
  copy.companion = std::make_unique<HeldFile>(companion, wrong);
  if (!wrong.empty()) return companion + " was not written (" + wrong + ").";
  const int file = ::open(copy.file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (file < 0) {
    wrong = copy.file + " was not written (" + std::generic_category().message(errno) + ").";
    ::unlink(companion.c_str());
    return wrong;
  }
  ::close(file);
  return {};
}

void RecoveryCopies::write(host::DocumentId id, const host::Document& document) {
  const std::uint64_t changeCount = engine_.undo().changeCount(id);
  const auto known = copies_.find(id);
  if (known != copies_.end() && known->second.changeCount == changeCount) return;
  const fs::path name(document.name);
  // A document that was never saved has no ending, and one of a kind that is only read can't be written back.
  const bool canBeWritten = engine_.formatFor(document.name) != nullptr;
  Copy fresh;
  fresh.start = cutAtLetter(name.stem().string(), longestStart);
  fresh.ending = canBeWritten ? name.extension().string() : ".vsdx";
  const bool isNew =
      known == copies_.end() || known->second.start != fresh.start || known->second.ending != fresh.ending;
  if (isNew) {
    if (const std::string wrong = make(fresh); !wrong.empty()) {
      lastError = wrong;
      return;
    }
  }
  Copy& copy = isNew ? fresh : known->second;
  if (const std::string text = companionText(document); text != copy.companionText) {
    if (copy.companion->write(text)) {
      copy.companionText = text;
    } else {
      lastError = copy.file + companionEnding + " was not written.";
    }
  }
  if (const std::string wrong = writeCopyAside(engine_, id, copy.file); !wrong.empty()) {
    lastError = wrong;
    if (isNew) remove(copy);
    return;
  }
  copy.changeCount = changeCount;
  if (!isNew) return;
  if (known != copies_.end()) remove(known->second);
  copies_[id] = std::move(fresh);
}

std::vector<LeftBehind> copiesLeftBehind(const std::string& folder) {
  std::vector<LeftBehind> found;
  std::error_code failed;
  for (fs::directory_iterator each(folder, failed), end; !failed && each != end; each.increment(failed)) {
    const std::optional<std::string> name = nameOfCopy(each->path());
    const std::string copy = each->path().string(), companionFile = copy + companionEnding;
    struct stat status;
    // An empty one was never written.
    if (!name || !isOwnFile(copy, status) || status.st_size == 0 || isHeld(companionFile)) continue;
    const std::string companion = contentsOfCompanion(companionFile);
    const auto value = [&](std::string_view key) { return profileValue(companion, section, key).or_({}); };
    const std::string written = value("Name");
    found.push_back({copy, value("Original"), written.empty() ? *name : written});
  }
  std::ranges::sort(found, {}, &LeftBehind::copy);
  return found;
}

std::string discardCopy(const std::string& copy) {
  const std::string companion = copy + companionEnding;
  struct stat status;
  const bool isThere = ::lstat(copy.c_str(), &status) == 0;
  if (!nameOfCopy(copy) || (isThere && !S_ISREG(status.st_mode)))
    return "was not removed: it is no copy that was written for recovery";
  if (isHeld(companion)) return "was not removed: the drawing that it is a copy of is still open";
  if (isThere && ::unlink(copy.c_str()) != 0) return "was not removed (" + std::generic_category().message(errno) + ")";
  if (::lstat(companion.c_str(), &status) == 0 && S_ISREG(status.st_mode)) ::unlink(companion.c_str());
  return {};
}

}  // namespace quorvel
