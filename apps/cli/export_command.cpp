// `quorvel export`: pages as SVG.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <utility>

#include "base/text.h"
#include "cli/commands.h"
#include "session/document_themes.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"
#include "formats/package/atomic_file.h"
#include "render/build/build_scene.h"
#include "render/svg/writer.h"

namespace quorvel::cli {
namespace {

namespace fs = std::filesystem;

struct Picture {
  std::string file, svg;
};

/// "OUT.svg" becomes "OUT-2 Credit check.svg". What a file system may refuse in a name becomes "_".
std::string fileForPage(const std::string& output, std::size_t number, std::string pageName) {
  std::ranges::replace_if(
      pageName,
      [](char c) {
        return static_cast<unsigned char>(c) < ' ' || std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
      },
      '_');
  const fs::path path(output);
  return (path.parent_path() /
          (path.stem().string() + "-" + std::to_string(number) + " " + pageName + path.extension().string()))
      .string();
}

bool hasContents(const host::Store& store, host::PageId page) { return !store.page(page)->shapes.empty(); }

/// The page asked for, else the foreground pages; a drawing that has only background pages shows those.
std::vector<host::PageId> pagesToDraw(const host::Store& store, const host::Document& document,
                                      const std::string& name) {
  std::vector<host::PageId> pages;
  if (!name.empty()) {
    if (const host::PageId page = store.pageNamed(document.id, name)) pages.push_back(page);
    return pages;
  }
  std::ranges::copy_if(document.pages, std::back_inserter(pages),
                       [&](host::PageId page) { return !store.page(page)->background; });
  return pages.empty() ? document.pages : pages;
}

bool isSheetOfMasters(const host::Store& store, const host::Document& document) {
  return !document.masters.empty() &&
         std::ranges::none_of(document.pages, [&](host::PageId page) { return hasContents(store, page); });
}

std::string pageNames(const host::Store& store, const host::Document& document) {
  std::string names;
  for (const host::PageId page : document.pages)
    names += (names.empty() ? "\"" : ", \"") + store.page(page)->name + "\"";
  return names.empty() ? "no pages" : names;
}

}  // namespace

int runExport(const ExportOptions& options) {
  if (!equalIgnoringCase(fs::path(options.output).extension().string(), ".svg"))
    return fail(options.output + " was not written: pictures are written as SVG; end its name with .svg.");
  const OpenedDrawing drawing = openDrawing(options.file);
  if (!drawing.error.empty()) return fail(drawing.error);
  const host::Store& store = drawing.store();
  const host::Document& document = *store.document(drawing.document);

  render::SceneOptions look;
  look.themes = themesOf(document);
  std::vector<Picture> pictures;
  if (options.page.empty() && isSheetOfMasters(store, document)) {
    pictures.push_back({options.output, render::writeSvg(render::buildMasterSheet(store, document.id, look))});
  } else {
    for (const host::PageId page : pagesToDraw(store, document, options.page)) {
      const std::size_t number = pictures.size() + 1;
      const std::string file =
          number == 1 ? options.output : fileForPage(options.output, number, store.page(page)->name);
      pictures.push_back({file, render::writeSvg(render::buildScene(store, page, look))});
    }
    if (pictures.empty() && !options.page.empty())
      return fail(options.file + " has no page \"" + options.page + "\"; it has " + pageNames(store, document) + ".");
    if (pictures.empty()) return fail(options.file + " has no page to draw; add one and try again.");
  }
  for (const Picture& picture : pictures) {
    const std::string wrong = formats::replaceFile(picture.file, picture.svg);
    if (!wrong.empty()) return fail(picture.file + " " + wrong + ".");
    std::cout << picture.file << '\n';
  }
  return exitDone;
}

}  // namespace quorvel::cli
