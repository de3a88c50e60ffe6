#include "render/cairo/scene_painter.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "render/cairo/images.h"
#include "render/cairo/soft_mask.h"
#include "render/scene/drawable.h"
#include "render/scene/hatch.h"
#include "render/text/pango_text.h"

namespace quorvel::render {
namespace {

struct CairoPatternDestroy {
  void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using CairoPattern = std::unique_ptr<cairo_pattern_t, CairoPatternDestroy>;

double share(std::uint32_t rgb, int shift) { return (rgb >> shift & 255) / 255.0; }

void setColour(cairo_t* target, const Colour& colour) {
  cairo_set_source_rgba(target, share(colour.rgb, 16), share(colour.rgb, 8), share(colour.rgb, 0), colour.opacity);
}

void tracePath(cairo_t* target, const Path& path) {
  const auto points = path.points();
  std::size_t at = 0;
  for (const PathVerb verb : path.verbs()) {
    switch (verb) {
      case PathVerb::MoveTo:
        cairo_move_to(target, points[at].x, points[at].y);
        at += 1;
        break;
      case PathVerb::LineTo:
        cairo_line_to(target, points[at].x, points[at].y);
        at += 1;
        break;
      case PathVerb::CurveTo:
        cairo_curve_to(target, points[at].x, points[at].y, points[at + 1].x, points[at + 1].y, points[at + 2].x,
                       points[at + 2].y);
        at += 3;
        break;
      case PathVerb::Close:
        cairo_close_path(target);
        break;
    }
  }
}

cairo_matrix_t cairoMatrix(const Matrix& matrix) {
  return {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f};
}

CairoPattern gradientPattern(const Gradient& gradient) {
  CairoPattern pattern(
      gradient.radial ? cairo_pattern_create_radial(gradient.from.x, gradient.from.y, 0, gradient.from.x,
                                                    gradient.from.y, gradient.radius)
                      : cairo_pattern_create_linear(gradient.from.x, gradient.from.y, gradient.to.x, gradient.to.y));
  for (const GradientStop& stop : gradient.stops)
    cairo_pattern_add_color_stop_rgba(pattern.get(), stop.offset, share(stop.colour.rgb, 16), share(stop.colour.rgb, 8),
                                      share(stop.colour.rgb, 0), stop.colour.opacity);
  return pattern;
}

/// The tile as a recording, so that it is sharp at every scale.
CairoPattern hatchPattern(const Pattern& hatch) {
  const PatternTile tile = patternTile(hatch.number);
  const cairo_rectangle_t extent{0, 0, tile.size, tile.size};
  const CairoSurface recording(cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extent));
  cairo_t* target = cairo_create(recording.get());
  if (hatch.ground.opacity > 0) {
    setColour(target, hatch.ground);
    cairo_paint(target);
  }
  setColour(target, hatch.ink);
  if (!tile.lines.isEmpty()) {
    cairo_set_line_width(target, tile.lineWidth);
    cairo_set_line_cap(target, CAIRO_LINE_CAP_ROUND);
    tracePath(target, tile.lines);
    cairo_stroke(target);
  }
  if (!tile.areas.isEmpty()) {
    tracePath(target, tile.areas);
    cairo_fill(target);
  }
  cairo_destroy(target);
  CairoPattern pattern(cairo_pattern_create_for_surface(recording.get()));
  cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_REPEAT);
  return pattern;
}

cairo_line_cap_t cairoCap(LineCap cap) {
  switch (cap) {
    case LineCap::Butt:
      return CAIRO_LINE_CAP_BUTT;
    case LineCap::Square:
      return CAIRO_LINE_CAP_SQUARE;
    case LineCap::Round:
      break;
  }
  return CAIRO_LINE_CAP_ROUND;
}

template <class Attribute>
void addAttribute(PangoAttrList* list, Attribute* attribute, std::size_t from = 0,
                  std::size_t to = PANGO_ATTR_INDEX_TO_TEXT_END) {
  attribute->start_index = guint(from);
  attribute->end_index = guint(to);
  pango_attr_list_insert(list, attribute);
}

}  // namespace

struct ScenePainter::State {
  PangoContextPointer context = newPangoContext();
  PangoLayoutPointer layout{pango_layout_new(context.get())};
  struct DecodedImage {
    std::shared_ptr<const std::string> bytes;  ///< kept, so that its address means this image
    CairoSurface surface;
  };
  std::unordered_map<const std::string*, DecodedImage> images;

  void paintFill(cairo_t* target, const Fill& fill) {
    if (const auto* colour = std::get_if<Colour>(&fill)) {
      setColour(target, *colour);
    } else if (const auto* gradient = std::get_if<Gradient>(&fill)) {
      cairo_set_source(target, gradientPattern(*gradient).get());
    } else if (const auto* hatch = std::get_if<Pattern>(&fill)) {
      cairo_set_source(target, hatchPattern(*hatch).get());
    } else {
      return;
    }
    cairo_fill_preserve(target);
  }

  void paint(cairo_t* target, const PathItem& item) {
    if (item.blur > 0) return paintShadow(target, item);
    tracePath(target, item.path);
    cairo_set_fill_rule(target, CAIRO_FILL_RULE_EVEN_ODD);
    paintFill(target, item.fill);
    if (item.stroke.visible) {
      if (item.stroke.gradient)
        cairo_set_source(target, gradientPattern(*item.stroke.gradient).get());
      else
        setColour(target, item.stroke.colour);
      cairo_set_line_width(target, item.stroke.width);
      cairo_set_line_cap(target, cairoCap(item.stroke.cap));
      cairo_set_line_join(target, CAIRO_LINE_JOIN_ROUND);
      // All dashes of no length would be an error that ends all painting.
      const bool dashed = std::ranges::any_of(item.stroke.dashes, [](double dash) { return dash > 0; });
      cairo_set_dash(target, item.stroke.dashes.data(), dashed ? int(item.stroke.dashes.size()) : 0, 0);
      cairo_stroke_preserve(target);
    }
    cairo_new_path(target);
  }

  /// The item as a mask of pixels, which are smeared: neither PNG nor PDF knows soft outlines.
  void paintShadow(cairo_t* target, const PathItem& item) {
    const auto* fill = std::get_if<Colour>(&item.fill);
    PathItem plain = item;
    plain.blur = 0;
    plain.stroke.colour.opacity = 1;
    if (fill) plain.fill = Colour{0, 1};
    Box area = boundsOf(item.path);
    const double reach = 3 * item.blur + (item.stroke.visible ? item.stroke.width : 0);
    area = {area.left - reach, area.top - reach, area.right + reach, area.bottom + reach};
    const SoftMask mask(area, item.blur, [&](cairo_t* pixels) { paint(pixels, plain); });
    if (!mask.surface()) return;
    cairo_save(target);
    setColour(target, fill ? *fill : item.stroke.colour);
    cairo_translate(target, area.left, area.top);
    cairo_scale(target, 1 / mask.pixelsPerPoint(), 1 / mask.pixelsPerPoint());
    cairo_mask_surface(target, mask.surface(), 0, 0);
    cairo_restore(target);
  }

  /// Blanks are widened until the run is as wide as it was laid out.
  void stretch(PangoAttrList* attributes, const TextRun& run, const TextStyle& style) {
    const auto blanks = std::count(run.text.begin(), run.text.end(), ' ');
    int natural = 0;
    pango_layout_get_size(layout.get(), &natural, nullptr);
    if (blanks == 0) return;
    const int more = int((run.width * PANGO_SCALE - natural) / double(blanks) + style.letterSpacing * PANGO_SCALE);
    for (std::size_t at = run.text.find(' '); at != std::string::npos; at = run.text.find(' ', at + 1))
      addAttribute(attributes, pango_attr_letter_spacing_new(more), at, at + 1);
    pango_layout_set_attributes(layout.get(), attributes);
  }

  void paint(cairo_t* target, const TextRun& run, const TextStyle& style) {
    PangoAttrList* attributes = pango_attr_list_new();
    addAttribute(attributes, pango_attr_font_features_new(fontFeatures));
    if (style.letterSpacing != 0)
      addAttribute(attributes, pango_attr_letter_spacing_new(int(style.letterSpacing * PANGO_SCALE)));
    if (style.underline || style.doubleUnderline)
      addAttribute(attributes,
                   pango_attr_underline_new(style.doubleUnderline ? PANGO_UNDERLINE_DOUBLE : PANGO_UNDERLINE_SINGLE));
    if (style.strikethrough) addAttribute(attributes, pango_attr_strikethrough_new(TRUE));
    pango_layout_set_font_description(layout.get(), fontOf(style, style.size).get());
    pango_layout_set_text(layout.get(), run.text.data(), int(run.text.size()));
    pango_layout_set_attributes(layout.get(), attributes);
    if (run.stretched) stretch(attributes, run, style);
    pango_attr_list_unref(attributes);
    setColour(target, style.colour);
    cairo_move_to(target, run.x, run.baseline);
    pango_cairo_show_layout_line(target, pango_layout_get_line_readonly(layout.get(), 0));
  }

  /// Letters of many pixels are refused by the font library, and that would end all painting.
  static bool hasDrawableSize(cairo_t* target, const TextLayout& text) {
    constexpr double mostPixels = 32000;
    cairo_matrix_t matrix;
    cairo_get_matrix(target, &matrix);
    const double stretch = std::max(std::hypot(matrix.xx, matrix.yx), std::hypot(matrix.xy, matrix.yy));
    return std::ranges::all_of(text.styles, [&](const TextStyle& style) { return style.size * stretch <= mostPixels; });
  }

  void paint(cairo_t* target, const TextItem& item) {
    const TextLayout& text = *item.layout;
    if (!isDrawable(item)) return;
    cairo_save(target);
    const cairo_matrix_t matrix = cairoMatrix(item.transform);
    cairo_transform(target, &matrix);
    if (!hasDrawableSize(target, text)) return cairo_restore(target);
    if (item.background.opacity > 0) {
      for (const TextLine& line : text.lines)
        if (line.width > 0) cairo_rectangle(target, line.left, line.top, line.width, line.height);
      setColour(target, item.background);
      cairo_fill(target);
    }
    for (const TextLine& line : text.lines)
      for (const TextRun& run : line.runs) paint(target, run, text.styles[std::size_t(run.style)]);
    cairo_new_path(target);
    cairo_restore(target);
  }

  cairo_surface_t* decoded(const ImageItem& item) {
    const auto [place, isNew] = images.try_emplace(item.bytes.get());
    if (isNew) place->second = {item.bytes, decodeImage(item)};
    return place->second.surface.get();
  }

  void paint(cairo_t* target, const ImageItem& item) {
    // An image of no extent would be an error that ends all painting.
    if (!item.bytes || item.transform.determinant() == 0) return;
    cairo_surface_t* surface = decoded(item);
    if (!surface) return;
    cairo_save(target);
    if (!item.clip.isEmpty()) {
      tracePath(target, item.clip);
      cairo_clip(target);
    }
    const cairo_matrix_t matrix = cairoMatrix(item.transform);
    cairo_transform(target, &matrix);
    cairo_scale(target, 1.0 / cairo_image_surface_get_width(surface), 1.0 / cairo_image_surface_get_height(surface));
    cairo_set_source_surface(target, surface, 0, 0);
    // Enlarged pixels blend into one another, but not into transparency at the image's edge.
    cairo_pattern_set_extend(cairo_get_source(target), CAIRO_EXTEND_PAD);
    cairo_rectangle(target, 0, 0, cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface));
    cairo_clip(target);
    cairo_paint_with_alpha(target, item.opacity);
    cairo_restore(target);
  }
};

ScenePainter::ScenePainter() : state_(std::make_unique<State>()) {}
ScenePainter::~ScenePainter() = default;

void ScenePainter::paint(cairo_t* target, const Scene& scene) {
  if (scene.background.opacity > 0) {
    setColour(target, scene.background);
    cairo_paint(target);
  }
  int open = 0, clips = 0;
  for (const SceneItem& item : scene.items) {
    if (const auto* begin = std::get_if<ShapeBegin>(&item)) {
      ++open;
      if (onShapeBegin) onShapeBegin(*begin);
    } else if (std::holds_alternative<ShapeEnd>(item)) {
      if (open > 0 && onShapeEnd) onShapeEnd();
      open = std::max(0, open - 1);
    } else if (const auto* path = std::get_if<PathItem>(&item)) {
      state_->paint(target, *path);
    } else if (const auto* text = std::get_if<TextItem>(&item)) {
      state_->paint(target, *text);
    } else if (const auto* image = std::get_if<ImageItem>(&item)) {
      state_->paint(target, *image);
    } else if (const auto* clip = std::get_if<ClipBegin>(&item)) {
      ++clips;
      cairo_save(target);
      tracePath(target, clip->path);
      cairo_set_fill_rule(target, CAIRO_FILL_RULE_EVEN_ODD);
      cairo_clip(target);
    } else if (std::holds_alternative<ClipEnd>(item) && clips > 0) {
      --clips;
      cairo_restore(target);
    }
  }
  for (; clips > 0; --clips) cairo_restore(target);
  for (; open > 0; --open)
    if (onShapeEnd) onShapeEnd();
}

}  // namespace quorvel::render
