// Paints a scene with Cairo: the one painter behind PNG and PDF.
#pragma once

#include <cairo.h>

#include <functional>
#include <memory>

#include "render/scene/scene.h"

namespace quorvel::render {

/// Keeps fonts, decoded images and hatches between pages. Not for use by two threads at once.
class ScenePainter {
 public:
  ScenePainter();
  ~ScenePainter();
  ScenePainter(const ScenePainter&) = delete;
  ScenePainter& operator=(const ScenePainter&) = delete;

  /// One unit of the target's current coordinates is a point. What can't be painted, such as a broken image, is
  /// skipped.
  void paint(cairo_t* target, const Scene& scene);

  /// Called for every shape before and after its items are painted, for what a format holds in addition to the picture.
  std::function<void(const ShapeBegin&)> onShapeBegin;
  std::function<void()> onShapeEnd;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvel::render
