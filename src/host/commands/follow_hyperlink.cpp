#include "host/commands/follow_hyperlink.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "base/link_address.h"
#include "base/text.h"
#include "host/commands/documents.h"
#include "host/commands/shapes.h"

namespace quorvel::host {
namespace {

namespace fs = std::filesystem;

/// Files that do something when they are opened, on any system: a drawing comes from one and is followed on another.
constexpr std::string_view programEndings[] = {
    ".app", ".appimage", ".application", ".appref-ms",  ".bash", ".bat",  ".chm", ".cmd", ".com", ".command", ".cpl",
    ".deb", ".desktop",  ".exe",         ".flatpakref", ".hta",  ".inf",  ".jar", ".js",  ".jse", ".lnk",     ".msc",
    ".msi", ".msp",      ".pif",         ".pl",         ".ps1",  ".psm1", ".py",  ".pyw", ".rb",  ".reg",     ".rpm",
    ".run", ".scr",      ".sh",          ".url",        ".vb",   ".vbe",  ".vbs", ".ws",  ".wsf", ".wsh"};

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

Outcome findPlace(const Store& store, DocumentId document, std::string_view subAddress, Place& place) {
  if (subAddress.empty()) return Outcome::done();
  const std::size_t slash = std::min(subAddress.find('/'), subAddress.size());
  const std::string pageName(subAddress.substr(0, slash));
  place.page = store.pageNamed(document, pageName);
  if (!place.page)
    return Outcome::refused("the drawing " + store.document(document)->name + " has no page \"" + pageName + "\"");
  const std::string shapeName(subAddress.substr(std::min(slash + 1, subAddress.size())));
  if (shapeName.empty()) return Outcome::done();
  place.shape = shapeOn(store, place.page, shapeName);
  if (!place.shape) return Outcome::refused("the page \"" + pageName + "\" has no shape \"" + shapeName + "\"");
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
    if (std::ranges::find(programEndings, endingOf(each)) != std::end(programEndings)) return true;
  }
  const fs::file_status status = fs::status(path, error);
  constexpr fs::perms execute = fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
  return fs::is_regular_file(status) && (status.permissions() & execute) != fs::perms::none;
}

Outcome openOutside(Engine& engine, const std::string& target, LinkTarget kind) {
  if (!engine.linkOpener()) return Outcome::refused(target + " is opened by another program, and there is none here");
  if (!engine.linkOpener()->openLink(target, kind)) return Outcome::refused(target + " could not be opened");
  return Outcome::done();
}

Outcome followToFile(Engine& engine, const std::string& file, const std::string& bookmark,
                     const HyperlinkTarget& link) {
  if (engine.formatFor(file)) return followToDrawing(engine, file, link);
  if (isProgram(file)) return openOutside(engine, file, LinkTarget::Program);
  // Only a browser takes a bookmark with the name of a file.
  if (!bookmark.empty() && endingOf(file).starts_with(".htm") && engine.linkOpener() &&
      engine.linkOpener()->openLink(uriOfPath(file) + "#" + escapedForUri(bookmark), LinkTarget::Address))
    return Outcome::done();
  return openOutside(engine, file, LinkTarget::File);
}

/// A file with what is behind the "#" of its address, if that is a bookmark.
struct FoundFile {
  std::string path, bookmark;
};

/// A name may have a "#" or a "%20" of its own, so the file that exists decides.
std::optional<FoundFile> findFile(const std::string& folder, const std::string& target) {
  const auto found = [&](const std::string& name) -> std::optional<std::string> {
    const std::string path = isAbsolutePath(name) ? name : folder + name;
#ifndef _WIN32
    if (hasDrive(path) || path.starts_with("//")) return {};  // would be a name in the current folder
#endif
    std::error_code error;
    return fs::exists(path, error) ? std::optional(fs::path(path).lexically_normal().string()) : std::nullopt;
  };
  for (const std::string& name : {target, unescapedUri(target)}) {
    if (const auto path = found(name)) return FoundFile{*path, {}};
    const std::size_t mark = name.rfind('#');
    if (mark == std::string::npos || mark == 0) continue;
    if (const auto path = found(name.substr(0, mark))) return FoundFile{*path, name.substr(mark + 1)};
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
      return Outcome::refused("\"" + link.address +
                              "\" is not followed; only files and addresses of http, https, ftp and mailto are");
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
        return Outcome::refused("\"" + link.address +
                                "\" is relative to the folder of the drawing, which was never saved");
      folder = document->path + folder;
    }
  }
  const std::optional<FoundFile> file = findFile(folder, target.target);
  if (!file) {
    const std::string path = folder.empty() ? std::string(trimmed(link.address))
                                            : fs::path(folder + target.target).lexically_normal().string();
    return Outcome::refused(path + " does not exist; check the name and the folder");
  }
  return followToFile(engine, file->path, file->bookmark, link);
}

}  // namespace quorvel::host
