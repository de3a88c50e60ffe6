#include "render/build/build_scene.h"

#include <algorithm>
#include <memory>

#include "render/build/shape_builder.h"
#include "render/scene/drawable.h"
#include "render/text/fonts.h"

namespace quorvel::render {
namespace {

constexpr int deepestBackground = 16;

/// Bounds of what was drawn from `from` on; text counts with its lines.
Box drawnBounds(const Scene& scene, std::size_t from) {
  Box box;
  for (std::size_t i = from; i < scene.items.size(); ++i) {
    const SceneItem& item = scene.items[i];
    if (const auto* path = std::get_if<PathItem>(&item)) {
      const Box drawn = boundsOf(path->path);
      if (drawn.isEmpty()) continue;
      const double half = path->stroke.visible ? path->stroke.width / 2 : 0;
      box.add(Box{drawn.left - half, drawn.top - half, drawn.right + half, drawn.bottom + half});
    } else if (const auto* text = std::get_if<TextItem>(&item)) {
      for (const TextLine& line : text->layout->lines) {
        box.add(text->transform({line.left, line.top}));
        box.add(text->transform({line.left + line.width, line.top + line.height}));
      }
    } else if (const auto* image = std::get_if<ImageItem>(&item)) {
      for (Point corner : {Point{0, 0}, Point{1, 0}, Point{0, 1}, Point{1, 1}}) box.add(image->transform(corner));
    }
  }
  return box;
}

void moveGradient(Gradient& gradient, const Matrix& by) {
  gradient.from = by(gradient.from);
  gradient.to = by(gradient.to);
  gradient.radius *= by.scale();
}

void moveItems(Scene& scene, std::size_t from, const Matrix& by) {
  for (std::size_t i = from; i < scene.items.size(); ++i) {
    SceneItem& item = scene.items[i];
    if (auto* path = std::get_if<PathItem>(&item)) {
      path->path.transform(by);
      if (auto* gradient = std::get_if<Gradient>(&path->fill)) moveGradient(*gradient, by);
      if (path->stroke.gradient) {
        Gradient moved = *path->stroke.gradient;
        moveGradient(moved, by);
        path->stroke.gradient = std::make_shared<const Gradient>(std::move(moved));
      }
      path->blur *= by.scale();
      path->stroke.width *= by.scale();
      for (double& dash : path->stroke.dashes) dash *= by.scale();
    } else if (auto* text = std::get_if<TextItem>(&item)) {
      text->transform = by * text->transform;
    } else if (auto* image = std::get_if<ImageItem>(&item)) {
      image->transform = by * image->transform;
      image->clip.transform(by);
    } else if (auto* clip = std::get_if<ClipBegin>(&item)) {
      clip->path.transform(by);
    }
  }
}

class PageDrawer {
 public:
  PageDrawer(const host::Store& store, const SceneOptions& options) : store_(store), options_(options) {
    if (!options.textEngine) own_ = std::make_unique<TextEngine>();
    engine_ = options.textEngine ? options.textEngine : own_.get();
  }

  TextEngine& engine() { return *engine_; }

  /// Background pages first. `paperHeight`: of the page in front, from whose lower left corner all measure.
  void draw(host::PageId id, double paperHeight, Scene& scene, host::PageId front = {}, int depth = 0) {
    const host::Page* page = store_.page(id);
    if (!page) return;
    if (options_.withBackgroundPages && page->backPage && depth < deepestBackground)
      draw(page->backPage, paperHeight, scene, front ? front : id, depth + 1);
    // A shape is mostly its two brackets, an outline and a text.
    scene.items.reserve(scene.items.size() + 4 * page->byShapeId.size());
    PageContext context(store_, *page, options_.themes);
    context.front = front;
    ShapeBuilder builder(context, options_.themes, *engine_, scene);
    const Matrix toScene{context.scale, 0, 0, -context.scale, 0, paperHeight};
    for (host::SheetId shape : page->shapes) builder.add(shape, toScene);
  }

 private:
  const host::Store& store_;
  const SceneOptions& options_;
  std::unique_ptr<TextEngine> own_;
  TextEngine* engine_;
};

Scene emptyScene(const SceneOptions& options) {
  Scene scene;
  if (!options.paperBackground) scene.background.opacity = 0;
  return scene;
}

}  // namespace

Scene buildScene(const host::Store& store, host::PageId id, const SceneOptions& options) {
  Scene scene = emptyScene(options);
  const host::Page* page = store.page(id);
  if (!page) return scene;
  const PageContext context(store, *page, options.themes);
  const ShapeCells cells(store, page->sheet);
  scene.title = page->name;
  const auto side = [&](const host::CellKey& key) {
    return std::clamp(cells.number(key) * context.scale, 0.0, farthestPlace);
  };
  scene.width = side(objectKeys().PageWidth);
  scene.height = side(objectKeys().PageHeight);
  PageDrawer(store, options).draw(id, scene.height, scene);
  return scene;
}

Scene buildMasterSheet(const host::Store& store, host::DocumentId id, const SceneOptions& options) {
  Scene scene = emptyScene(options);
  const host::Document* document = store.document(id);
  if (!document) return scene;
  scene.title = document->name;
  PageDrawer drawer(store, options);

  // Cells of one size; what is larger is made smaller to fit, with its name beneath.
  constexpr double cell = 126, picture = 90, margin = 18, label = 28;
  std::vector<const host::Master*> masters;
  for (host::MasterId masterId : document->masters)
    if (const host::Master* master = store.master(masterId); master && !master->hidden) masters.push_back(master);
  const std::size_t columns = std::clamp<std::size_t>(masters.size(), 1, 5);
  const std::size_t rows = std::max<std::size_t>(1, (masters.size() + columns - 1) / columns);
  scene.width = margin * 2 + cell * double(columns);
  scene.height = margin * 2 + (cell + 10) * double(rows);

  StyledText name;
  name.formats.resize(1);
  name.formats[0].style.family = installedFamily("Arial");
  name.formats[0].style.size = 9;
  name.formats[0].style.colour = {0x333333, 1};
  for (std::size_t i = 0; i < masters.size(); ++i) {
    const double left = margin + cell * double(i % columns), top = margin + (cell + 10) * double(i / columns);
    const std::size_t from = scene.items.size();
    drawer.draw(masters[i]->contents, 0, scene);
    if (const Box box = drawnBounds(scene, from); !box.isEmpty()) {
      const double scale =
          std::min({1.0, picture / std::max(box.width(), 1e-6), picture / std::max(box.height(), 1e-6)});
      moveItems(scene, from,
                Matrix::translation(left + cell / 2, top + picture / 2) * Matrix::scaling(scale, scale) *
                    Matrix::translation(-(box.left + box.right) / 2, -(box.top + box.bottom) / 2));
    }
    name.paragraphs = {{ParagraphFormat{}, {{masters[i]->name, 0}}}};
    TextItem text;
    text.layout = drawer.engine().layOut(name, cell - 8);
    text.transform =
        Matrix::translation(left + 4, top + picture + (label - std::min(label, text.layout->height)) / 2 + 2);
    scene.items.emplace_back(std::move(text));
  }
  return scene;
}

}  // namespace quorvel::render
