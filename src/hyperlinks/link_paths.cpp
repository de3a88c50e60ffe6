#include "hyperlinks/link_paths.h"

#include "base/ask_again.h"
#include "base/basic_text.h"
#include "base/text.h"

namespace quorvel::addin {
namespace {

constexpr std::string_view separators = "\\/";
/// The size of the Windows function's buffer, its ending NUL included.
constexpr std::size_t longestWindowsPath = 260;

/// The bytes up to and without the last separator.
std::size_t folderLength(std::string_view path) {
  const std::size_t last = path.find_last_of(separators);
  return last == std::string_view::npos ? 0 : last + 1;
}

struct PathKind {
  char separator;
  bool ignoresCase;
  bool same(char a, char b) const {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return a == b || (ignoresCase && lower(a) == lower(b));
  }
};
constexpr PathKind windowsPath{'\\', true}, posixPath{'/', false};

bool isPosix(std::string_view path) { return path.starts_with('/'); }

/// How many bytes two paths share up to the end of a component. The root of a drive counts with its separator.
std::size_t commonLength(std::string_view a, std::string_view b, const PathKind& kind) {
  const auto isServer = [&](std::string_view path) { return path.starts_with("\\\\"); };
  if (isServer(a) != isServer(b)) return 0;
  const auto endsAt = [&](std::string_view path, std::size_t at) {
    return at >= path.size() || path[at] == kind.separator;
  };
  std::size_t common = 0;
  for (std::size_t at = isServer(a) ? 2 : 0;; ++at) {
    if (endsAt(a, at) && endsAt(b, at)) common = at;
    if (at >= a.size() || at >= b.size() || !kind.same(a[at], b[at])) break;
  }
  constexpr std::size_t drive = 2;
  return common == drive && kind.separator == '\\' ? drive + 1 : common;
}

/// The way as the Windows function gives it; nothing when there is none.
Maybe<std::string> wayTo(std::string_view folder, std::string_view target) {
  const PathKind& kind = isPosix(folder) ? posixPath : windowsPath;
  if (isPosix(folder) != isPosix(target)) return {};
  const std::size_t last = target.rfind(kind.separator);
  std::string_view targetFolder = last == std::string_view::npos ? std::string_view() : target.substr(0, last);
  if (targetFolder.size() == 2 && targetFolder[1] == ':') targetFolder = target.substr(0, 3);
  const std::size_t common = commonLength(folder, targetFolder, kind);
  if (common == 0 && !isPosix(folder)) return {};

  std::string way;
  std::string_view left = folder.substr(std::min(common, folder.size()));
  if (left.empty()) way = ".";
  if (left.starts_with(kind.separator)) left.remove_prefix(1);
  while (!left.empty()) {
    const std::size_t end = left.find(kind.separator);
    left = end == std::string_view::npos ? std::string_view() : left.substr(end + 1);
    way += "..";
    if (!left.empty()) way += kind.separator;
  }
  // Behind the root of a drive the separator is part of what both share.
  std::string_view rest = target.substr(common);
  if (!rest.empty() && rest.front() != kind.separator && common > 0) rest = target.substr(common - 1);
  if (!isPosix(folder) && way.size() + rest.size() >= longestWindowsPath) return {};
  return way.append(rest);
}

}  // namespace

std::string StripTerminator(std::string_view text) { return std::string(text.substr(0, text.find('\0'))); }

std::string GetPath01(std::string_view path) {
  const std::size_t length = folderLength(path);
  return std::string(length == 0 ? path : path.substr(0, length));
}

std::string fileNameOf(std::string_view path) { return std::string(path.substr(folderLength(path))); }

std::string folderOf(std::string_view path) { return std::string(path.substr(0, folderLength(path))); }

bool holdsFullPath(std::string_view text) {
  return text.find(":\\") != std::string_view::npos || text.starts_with("\\\\") || isPosix(text);
}

bool haveSameRoot(std::string_view a, std::string_view b) {
  if (isPosix(a) || isPosix(b)) return isPosix(a) && isPosix(b);
  return equalIgnoringCase(left(a, 3), left(b, 3));
}

std::string get_relative_path_to(std::string_view fromFolder, std::string_view toPath) {
  const std::string way = wayTo(StripTerminator(fromFolder), StripTerminator(toPath)).or_({});
  const bool leadsDown = !way.empty() && separators.find(way.front()) != std::string_view::npos;
  return leadsDown ? way.substr(1) : way;
}

std::string get_Rel(const Document& document, std::string_view relative) {
  for (const std::string_view up : {"..\\", "../"}) {
    const std::size_t at = relative.find(up);
    if (at == std::string_view::npos) continue;
    relative.remove_prefix(at + up.size());
    break;
  }
  return askAgain([&] { return document.Path(); }).or_({}) + std::string(relative);
}

std::string fullPathOf(const Document& document) {
  const Maybe<std::string> path = askAgain([&] { return document.Path(); });
  const Maybe<std::string> name = askAgain([&] { return document.Name(); });
  return path && name ? *path + *name : std::string();
}

bool notCurrentDOc(const Document& document, std::string_view path) { return path != fullPathOf(document); }

Document openDocument(const Application& application, std::string_view path) {
  for (const Document& document : application.Documents().all()) {
    if (equalIgnoringCase(fullPathOf(document), path)) return document;
  }
  return {};
}

}  // namespace quorvel::addin
