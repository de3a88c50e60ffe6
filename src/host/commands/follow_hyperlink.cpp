#include "host/commands/follow_hyperlink.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "base/link_address.h"
#include "base/text.h"
#include "host/commands/documents.h"
#include "host/commands/program_endings.h"
#include "host/commands/shapes.h"

namespace quorvel::host {
namespace {

namespace fs = std::filesystem;

/// Where a link leads within a drawing; both null: the drawing as it is shown.
struct Place {
  PageId page;
  SheetId shape;
};

/// Shapes at the top of the page come before members of groups.
SheetId shapeOn(const Store& store, PageId page, std::string_view name) {
  const std::vector<SheetId>& tops = store.page(page)->shapes;
  if (const SheetId top = store.shapeNamed(tops, name, NameKind::Local)) return top;
  for (const SheetId top : tops) {
    if (const SheetId member = store.shapeNamed(store.subtree(top), name, NameKind::Local)) return member;
  }
  return {};
}

/// Of a long text only the start, because the reason is shown to users.
std::string shortened(std::string_view text) {
  constexpr std::size_t most = 200;
  std::size_t end = 0, count = 0;
  while (end < text.size() && count++ < most) decodeNext(text, end);
  return std::string(text.substr(0, end)) + (end < text.size() ? "..." : "");
}

std::string quotedStart(std::string_view text) { return "\"" + shortened(text) + "\""; }

/// The longest name that a page has ends where the shape's name begins: both may have a "/".
Outcome findPlace(const Store& store, DocumentId document, std::string_view subAddress, Place& place) {
  if (subAddress.empty()) return Outcome::done();
  if (subAddress.starts_with('/')) return Outcome::refused(quotedStart(subAddress) + " names a shape without its page");
  std::size_t slash = subAddress.size();
  place.page = store.pageNamed(document, std::string(subAddress));
  while (!place.page && (slash = subAddress.rfind('/', slash - 1)) != std::string_view::npos && slash > 0)
    place.page = store.pageNamed(document, std::string(subAddress.substr(0, slash)));
  if (!place.page) {
    return Outcome::refused("the drawing " + store.document(document)->name + " has no page " +
                            quotedStart(subAddress.substr(0, subAddress.find('/'))));
  }
  const std::string_view pageName = subAddress.substr(0, slash);
  const std::string_view shapeName = subAddress.substr(std::min(slash + 1, subAddress.size()));
  if (shapeName.empty()) return Outcome::done();
  place.shape = shapeOn(store, place.page, shapeName);
  if (!place.shape)
    return Outcome::refused("the page " + quotedStart(pageName) + " has no shape " + quotedStart(shapeName));
  return Outcome::done();
}

std::optional<double> zoomIn(std::string_view extraInfo) {
  constexpr std::string_view start = "zoom=";
  extraInfo = trimmed(extraInfo);
  if (!startsWithIgnoringCase(extraInfo, start)) return {};
  extraInfo.remove_prefix(start.size());
  int percent = 0;
  const auto [end, error] = std::from_chars(extraInfo.data(), extraInfo.data() + extraInfo.size(), percent);
  if (error != std::errc() || end != extraInfo.data() + extraInfo.size()) return {};
  const double zoom = percent > 0 ? percent / 100.0 : percent;
  return isZoom(zoom) ? std::optional(zoom) : std::nullopt;
}

/// Listeners may close the window or delete the place at each event; then the rest is left out.
void show(Engine& engine, WindowId window, const Place& place, std::optional<double> zoom) {
  if (place.page && engine.exists(window, place.page)) showPage(engine, window, place.page);
  if (place.shape && engine.exists(window, place.shape) && engine.window(window)->page == place.page)
    setSelection(engine, window, {place.shape});
  if (zoom && engine.exists(window)) engine.window(window)->setZoom(*zoom);
}

void show(Engine& engine, DocumentId document, const Place& place, const HyperlinkTarget& link) {
  const WindowState* const open = engine.windowOf(document);
  WindowId window;
  if (open && !link.newWindow) {
    window = open->id;
  } else {
    window = engine.addWindow(document);
    if (place.page) engine.window(window)->page = place.page;
  }
  const bool isNew = !open || link.newWindow;
  if (isNew || engine.activeWindow()->id != window) {
    engine.bringToFront(window);
    engine.raise(&ApplicationEvents::WindowActivated, window);
  }
  show(engine, window, place, zoomIn(link.extraInfo));
}

Outcome followInto(Engine& engine, DocumentId document, const HyperlinkTarget& link) {
  Place place;
  if (const Outcome found = findPlace(engine.store(), document, link.subAddress, place); !found) return found;
  show(engine, document, place, link);
  return Outcome::done();
}

Outcome followToDrawing(Engine& engine, const std::string& file, HyperlinkTarget link) {
  Place place;
  const auto documentsBefore = engine.store().documents();
  // The place is looked for before the drawing has a window and events, so that a wrong link opens nothing.
  const DocumentOutcome opened = openDocument(engine, file, false, false, false, [&](DocumentId document) {
    return findPlace(engine.store(), document, link.subAddress, place);
  });
  if (!opened.outcome) return opened.outcome;
  if (engine.store().document(opened.document)->isStencil) return Outcome::done();
  const bool wasOpen = std::ranges::find(documentsBefore, opened.document) != documentsBefore.end();
  link.newWindow = link.newWindow && wasOpen;
  if (place.page && !engine.exists(place.page)) place = {};
  show(engine, opened.document, place, link);
  return Outcome::done();
}

std::string endingOf(const fs::path& path) {
  std::string name = foldCase(path.filename().string());
  // Some systems overlook dots and spaces at the end of a name.
  name.erase(std::min(name.find_last_not_of(". ") + 1, name.size()));
  const std::size_t dot = name.rfind('.');
  return dot == std::string::npos ? std::string() : name.substr(dot);
}

bool isProgram(const fs::path& path) {
  std::error_code error;
  const fs::path behindLinks = fs::canonical(path, error);
  for (const fs::path& each : {path, behindLinks}) {
    if (startsProgram(endingOf(each))) return true;
  }
  const fs::file_status status = fs::status(path, error);
  constexpr fs::perms execute = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
  return fs::is_regular_file(status) && (status.permissions() & execute) != fs::perms::none;
}

Outcome openOutside(Engine& engine, const std::string& target, LinkTarget kind) {
  if (!engine.linkOpener())
    return Outcome::refused(shortened(target) + " is opened by another program, and there is none here");
  if (!engine.linkOpener()->openLink(target, kind)) return Outcome::refused(shortened(target) + " could not be opened");
  return Outcome::done();
}

Outcome followToFile(Engine& engine, const std::string& file, const std::string& bookmark,
                     const HyperlinkTarget& link) {
  // Another program may read a drawing that is known here by its name alone.
  if (const DocumentFormat* const format = engine.formatFor(file); format && format->canRead())
    return followToDrawing(engine, file, link);
  if (isProgram(file)) return openOutside(engine, file, LinkTarget::Program);
  // Only a browser takes a bookmark with the name of a file.
  if (!bookmark.empty() && endingOf(file).starts_with(".htm"))
    return openOutside(engine, uriOfPath(file) + "#" + escapedForUri(bookmark), LinkTarget::Address);
  return openOutside(engine, file, LinkTarget::File);
}

/// A file with what is behind the "#" of its address, if that is a bookmark.
struct FoundFile {
  std::string path, bookmark;
};

/// The path without its "." and ".." where that is the same file: ".." behind a symbolic link to a folder leads to
/// another place than the text shows.
std::string shortestPathTo(const fs::path& path) {
  std::error_code error;
  fs::path shortest = path.lexically_normal();
  return fs::equivalent(path, shortest, error) ? shortest.string() : path.string();
}

/// `name` below the folder in any letter case, as the system that it was written on finds it; nothing unless each of
/// its steps is one entry.
std::optional<fs::path> pathInAnyCase(const fs::path& folder, const std::string& name) {
  if (isAbsolutePath(name)) return {};
  constexpr int mostEntries = 10'000;
  fs::path path = folder;
  std::error_code error;
  for (const fs::path& step : fs::path(name)) {
    if (fs::exists(path / step, error)) {
      path /= step;
      continue;
    }
    const std::string wanted = foldCase(step.string());
    std::optional<fs::path> found;
    int entries = 0;
    for (fs::directory_iterator each(path, error), end; !error && each != end; each.increment(error)) {
      if (++entries > mostEntries) return {};
      if (foldCase(each->path().filename().string()) != wanted) continue;
      if (found) return {};
      found = each->path();
    }
    if (!found) return {};
    path = *found;
  }
  return fs::exists(path, error) ? std::optional(path) : std::nullopt;
}

std::optional<fs::path> pathAsWritten(const fs::path& folder, const std::string& name) {
  std::error_code error;
  const fs::path path = folder / name;
  return fs::exists(path, error) ? std::optional(path) : std::nullopt;
}

/// A name may have a "#" or a "%20" of its own, so the file that exists decides. The folder is empty for a target that
/// is absolute.
std::optional<FoundFile> findFile(const std::string& folder, const std::string& target) {
  constexpr int mostMarks = 16;
  const std::string unescaped = unescapedUri(target);
  for (const bool anyCase : {false, true}) {
    if (anyCase && folder.empty()) break;
    const auto find = [&](const std::string& name) -> std::optional<fs::path> {
#ifndef _WIN32
      const std::string& start = isAbsolutePath(name) ? name : folder;
      if (hasDrive(start) || start.starts_with("//")) return {};  // would be a name in the current folder
#endif
      return anyCase ? pathInAnyCase(folder, name) : pathAsWritten(folder, name);
    };
    for (const std::string& name : {target, unescaped}) {
      if (holdsControlCharacter(name)) continue;
      if (const auto path = find(name)) return FoundFile{shortestPathTo(*path), {}};
      std::size_t mark = name.rfind('#');
      for (int n = 0; n < mostMarks && mark != std::string::npos && mark > 0; ++n, mark = name.rfind('#', mark - 1)) {
        if (const auto path = find(name.substr(0, mark)))
          return FoundFile{shortestPathTo(*path), unescapedUri(name.substr(mark + 1))};
      }
    }
  }
  return {};
}

}  // namespace

Outcome followHyperlink(Engine& engine, DocumentId holder, const HyperlinkTarget& link) {
  const Document* const document = engine.store().document(holder);
  if (!document) return Outcome::refused("the document is deleted");
  const LinkAddress target = readLinkAddress(link.address);
  switch (target.kind) {
    case AddressKind::None:
      return followInto(engine, holder, link);
    case AddressKind::Refused:
      return Outcome::refused(quotedStart(link.address) + " is not followed; " + target.target);
    case AddressKind::Web:
    case AddressKind::Mail:
      return openOutside(engine, uriOfLink(link.address, link.subAddress), LinkTarget::Address);
    case AddressKind::File:
      break;
  }
  std::string folder;
  if (!isAbsolutePath(target.target)) {
    const std::string& baseAddress = document->properties.hyperlinkBase;
    const LinkAddress base = readLinkAddress(baseAddress);
    if (base.kind == AddressKind::Web)
      return openOutside(engine, uriOfLink(link.address, link.subAddress, baseAddress), LinkTarget::Address);
    if (base.kind == AddressKind::File) folder = base.target + "/";
    if (folder.empty() || !isAbsolutePath(folder)) {
      if (document->path.empty())
        return Outcome::refused(quotedStart(link.address) +
                                " is relative to the folder of the drawing, which was never saved");
      folder = document->path + folder;
    }
  }
  const std::optional<FoundFile> file = findFile(folder, target.target);
  if (!file) {
    const std::string path = folder.empty() ? std::string(trimmed(link.address))
                                            : fs::path(folder + target.target).lexically_normal().string();
    return Outcome::refused(shortened(path) + " does not exist; check the name and the folder");
  }
  return followToFile(engine, file->path, file->bookmark, link);
}

}  // namespace quorvel::host
