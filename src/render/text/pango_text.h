// What measuring and drawing text share, so that what is drawn is as wide as what was measured.
#pragma once

#include <pango/pangocairo.h>

#include <memory>

#include "render/scene/scene.h"

namespace quorvel::render {

struct GObjectUnref {
  void operator()(gpointer object) const { g_object_unref(object); }
};
using PangoContextPointer = std::unique_ptr<PangoContext, GObjectUnref>;
using PangoLayoutPointer = std::unique_ptr<PangoLayout, GObjectUnref>;
struct PangoFontDescriptionFree {
  void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
};
using PangoFontDescriptionPointer = std::unique_ptr<PangoFontDescription, PangoFontDescriptionFree>;

/// A context whose widths do not depend on a screen's pixels; one unit is a point.
PangoContextPointer newPangoContext();

/// Letters are set without kerning and ligatures: only so do widths of texts agree with those in files of other
/// programs (to 0.00007 in in 25 widths of five drawings).
inline constexpr const char* fontFeatures = "kern=0, liga=0, clig=0";

/// The face of the style at `size` points.
PangoFontDescriptionPointer fontOf(const TextStyle& style, double size);

}  // namespace quorvel::render
