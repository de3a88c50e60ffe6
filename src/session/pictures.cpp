#include "session/pictures.h"

#include "base/text.h"
#include "render/build/build_scene.h"
#include "render/pdf/writer.h"
#include "render/png/writer.h"
#include "render/svg/writer.h"
#include "report/process_map.h"
#include "session/document_themes.h"

namespace quorvel {

Maybe<PictureFormat> pictureFormatOf(std::string_view fileName) {
  const std::string_view ending = fileName.size() < 4 ? fileName : fileName.substr(fileName.size() - 4);
  if (equalIgnoringCase(ending, ".svg")) return PictureFormat::Svg;
  if (equalIgnoringCase(ending, ".png")) return PictureFormat::Png;
  if (equalIgnoringCase(ending, ".pdf")) return PictureFormat::Pdf;
  return {};
}

namespace {

std::string_view nameOf(schema::ShapeClass shapeClass) {
  switch (shapeClass) {
    case schema::ShapeClass::Task:
      return "task";
    case schema::ShapeClass::TaskLink:
      return "task-link";
    case schema::ShapeClass::ProcessConnector:
      return "process-connector";
    case schema::ShapeClass::Other:
      break;
  }
  return {};
}

/// Adds the class of each Task, link and connector on the page, so that a web page around the picture can find it.
void describeShapes(render::Scene& scene, const host::Store& store) {
  int depth = 0;
  for (render::SceneItem& item : scene.items) {
    if (std::holds_alternative<render::ShapeEnd>(item)) --depth;
    auto* const begin = std::get_if<render::ShapeBegin>(&item);
    if (!begin || depth++ > 0 || !store.sheet(begin->shape)) continue;
    const schema::ShapeClass shapeClass = report::classOfShape(store, begin->shape);
    if (shapeClass != schema::ShapeClass::Other) begin->data.emplace_back("class", nameOf(shapeClass));
    if (shapeClass == schema::ShapeClass::Task) {
      begin->data.emplace_back("task-id", report::labelOfShape(store, begin->shape));
    }
    const std::string& uniqueId = store.sheet(begin->shape)->uniqueId;
    if (!uniqueId.empty()) begin->data.emplace_back("unique-id", uniqueId);
  }
}

}  // namespace

render::Scene sceneOfPage(const host::Store& store, const host::Document& document, host::PageId page) {
  render::SceneOptions look;
  look.themes = themesOf(document);
  render::Scene scene = render::buildScene(store, page, look);
  scene.idPrefix = "page" + std::to_string(store.page(page)->fileId) + "-";
  describeShapes(scene, store);
  return scene;
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
