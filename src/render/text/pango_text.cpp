#include "render/text/pango_text.h"

namespace quorvel::render {

PangoContextPointer newPangoContext() {
  PangoContextPointer context(pango_font_map_create_context(pango_cairo_font_map_get_default()));
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  pango_cairo_context_set_font_options(context.get(), options);
  cairo_font_options_destroy(options);
  pango_cairo_context_set_resolution(context.get(), 72);
  pango_context_set_round_glyph_positions(context.get(), FALSE);
  return context;
}

PangoFontDescriptionPointer fontOf(const TextStyle& style, double size) {
  PangoFontDescriptionPointer font(pango_font_description_new());
  pango_font_description_set_family(font.get(), style.family.c_str());
  pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
  if (style.bold) pango_font_description_set_weight(font.get(), PANGO_WEIGHT_BOLD);
  if (style.italic) pango_font_description_set_style(font.get(), PANGO_STYLE_ITALIC);
  if (style.smallCaps) pango_font_description_set_variant(font.get(), PANGO_VARIANT_SMALL_CAPS);
  return font;
}

}  // namespace quorvel::render
