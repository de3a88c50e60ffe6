#include "session/pictures.h"

#include "base/text.h"
#include "render/build/build_scene.h"
#include "render/pdf/writer.h"
#include "render/png/writer.h"
#include "render/svg/writer.h"
#include "session/document_themes.h"

namespace quorvel {

Maybe<PictureFormat> pictureFormatOf(std::string_view fileName) {
  const std::string_view ending = fileName.size() < 4 ? fileName : fileName.substr(fileName.size() - 4);
  if (equalIgnoringCase(ending, ".svg")) return PictureFormat::Svg;
  if (equalIgnoringCase(ending, ".png")) return PictureFormat::Png;
  if (equalIgnoringCase(ending, ".pdf")) return PictureFormat::Pdf;
  return {};
}

render::Scene sceneOfPage(const host::Store& store, const host::Document& document, host::PageId page) {
  render::SceneOptions look;
  look.themes = themesOf(document);
  return render::buildScene(store, page, look);
}

std::string writePicture(std::span<const render::Scene> scenes, PictureFormat format, std::string_view title,
                         const PictureOptions& options) {
  if (scenes.empty()) return {};
  switch (format) {
    case PictureFormat::Svg:
      return render::writeSvg(scenes.front());
    case PictureFormat::Png:
      return render::writePng(scenes.front(), options.pixelsPerInch);
    case PictureFormat::Pdf:
      return render::writePdf(scenes, title);
  }
  return {};
}

}  // namespace quorvel
