// Adds shapes to a scene.
#pragma once

#include <unordered_map>

#include "render/build/shared_stems.h"
#include "render/cells/page_context.h"
#include "render/cells/shape_cells.h"
#include "render/images/image.h"
#include "render/scene/scene.h"
#include "render/text/layout.h"

namespace quorvel::render {

/// Where a sheet's own coordinates (inches, y upward) lie in its parent's.
struct ShapeFrame {
  double width = 0, height = 0;
  Matrix toParent;
};
ShapeFrame frameOf(const ShapeCells& cells);

/// Draws the shapes of one page into a scene.
class ShapeBuilder {
 public:
  /// `themes` must outlive the builder.
  ShapeBuilder(const PageContext& page, const std::vector<Theme>& themes, TextEngine& text, Scene& scene)
      : page_(page), themes_(themes), text_(text), scene_(scene) {}

  /// `parentToPage`: from the coordinates of the page or group around the shape to the scene's.
  void add(host::SheetId shape, const Matrix& parentToPage, bool parentVisible = true, int depth = 0);

 private:
  bool isVisible(const ShapeCells& cells, bool parentVisible) const;
  void addOwn(const ShapeCells& cells, const ShapeFrame& frame, const Matrix& toPage);
  void addGeometry(const ShapeCells& cells, const Matrix& toPage);
  void addPicture(const ShapeCells& cells, const ShapeFrame& frame, const Matrix& toPage);
  void addText(const ShapeCells& cells, const ShapeFrame& frame, const Matrix& toPage);
  void setLink(const ShapeCells& cells, ShapeBegin& begin) const;

  /// Into the scene, unless it cannot be drawn.
  void put(SceneItem item);

  PageContext page_;  ///< with the theme of the shape that is drawn
  const std::vector<Theme>& themes_;
  TextEngine& text_;
  Scene& scene_;
  std::unordered_map<const host::ForeignData*, Picture> pictures_;
  SharedStems stems_;
};

}  // namespace quorvel::render
