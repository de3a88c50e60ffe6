// `quorvel export`: pages as SVG, PNG or PDF.
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <utility>

#include "base/text.h"
#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/open_drawing.h"
#include "formats/package/atomic_file.h"
#include "render/build/build_scene.h"
#include "render/text/fonts.h"
#include "session/document_themes.h"
#include "session/pictures.h"

namespace quorvel::cli {
namespace {

namespace fs = std::filesystem;

struct Picture {
  std::string file, bytes;
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
  const Maybe<PictureFormat> format = pictureFormatOf(options.output);
  if (!format)
    return fail(options.output +
                " was not written: pictures are written as SVG, PNG or PDF; end its name with .svg, .png or .pdf.");
  if (!(options.pixelsPerInch >= 10 && options.pixelsPerInch <= 1200))
    return fail(options.output + " was not written: --dpi must be from 10 to 1200.");
  render::findFontsAhead();
  const OpenedDrawing drawing = openDrawing(options.file);
  if (!drawing.error.empty()) return fail(drawing.error);
  const host::Store& store = drawing.store;
  const host::Document& document = *store.document(drawing.document);

  std::vector<render::Scene> scenes;
  if (options.page.empty() && isSheetOfMasters(store, document)) {
    render::SceneOptions look;
    look.themes = themesOf(document);
    scenes.push_back(render::buildMasterSheet(store, document.id, look));
  } else {
    for (const host::PageId page : pagesToDraw(store, document, options.page))
      scenes.push_back(sceneOfPage(store, document, page));
    if (scenes.empty() && !options.page.empty())
      return fail(options.file + " has no page \"" + options.page + "\"; it has " + pageNames(store, document) + ".");
    if (scenes.empty()) return fail(options.file + " has no page to draw; add one and try again.");
  }

  // A PDF holds all pages, the other formats one to a file.
  const std::size_t perFile = *format == PictureFormat::Pdf ? scenes.size() : 1;
  std::vector<Picture> pictures;
  for (std::size_t at = 0; at < scenes.size(); at += perFile) {
    const std::string file = at == 0 ? options.output : fileForPage(options.output, at + 1, scenes[at].title);
    const std::span<const render::Scene> shown(scenes.data() + at, perFile);
    pictures.push_back({file, writePicture(shown, *format, document.name, {options.pixelsPerInch})});
    if (pictures.back().bytes.empty())
      return fail(
          file +
          " was not written: the page could not be painted, most often for lack of memory; try a smaller --dpi.");
  }
  for (const Picture& picture : pictures) {
    const std::string wrong = formats::replaceFile(picture.file, picture.bytes, formats::Flush::WhenConvenient);
    if (!wrong.empty()) return fail(picture.file + " " + wrong + ".");
    std::cout << picture.file << '\n';
  }
  endProcess(exitDone);
}

}  // namespace quorvel::cli
