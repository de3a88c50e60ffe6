// Reads a theme part with the markup parser of the text library, so that render needs no other one.
#include <glib.h>

#include <charconv>
#include <cstring>

#include "base/text.h"
#include "render/cells/theme.h"

namespace quorvel::render {
namespace {

constexpr std::string_view schemeNames[] = {"dk1",     "lt1",     "dk2",     "lt2",     "accent1", "accent2",
                                            "accent3", "accent4", "accent5", "accent6", "hlink",   "folHlink"};

std::string_view localName(const char* name) {
  const char* colon = std::strchr(name, ':');
  return colon ? colon + 1 : name;
}

int schemeIndex(std::string_view name) {
  if (name == "tx1") name = "dk1";
  if (name == "bg1") name = "lt1";
  if (name == "tx2") name = "dk2";
  if (name == "bg2") name = "lt2";
  for (int i = 0; i < 12; ++i)
    if (schemeNames[i] == name) return i;
  return -1;
}

/// The parser reports elements one by one; what an element means follows from those around it.
class Reader {
 public:
  Theme theme;
  bool isTheme = false;

  void start(const char* rawName, const char** names, const char** values) {
    const std::string_view name = localName(rawName);
    const auto attribute = [&](std::string_view wanted) -> std::string_view {
      for (int i = 0; names[i]; ++i)
        if (localName(names[i]) == wanted) return values[i];
      return {};
    };
    const auto number = [&](std::string_view wanted, int otherwise) {
      const std::string_view text = attribute(wanted);
      int result = otherwise;
      std::from_chars(text.data(), text.data() + text.size(), result);
      return result;
    };
    const std::string_view parent = stack_.empty() ? std::string_view() : std::string_view(stack_.back());

    if (name == "theme") isTheme = true;
    if (name == "srgbClr" || name == "schemeClr" || name == "sysClr") {
      beginColour(name, name == "sysClr" ? attribute("lastClr") : attribute("val"));
    } else if (colourDepth_ > 0) {
      change(name, number("val", 0) / 100000.0);
    } else if (name == "schemeID") {
      if (inside("clrScheme")) theme.schemeNumber = number("schemeEnum", 0);
    } else if (name == "variationClrScheme") {
      theme.variationColours.push_back({{}, attribute("monotone") == "1" || attribute("monotone") == "true"});
    } else if (name == "latin" && inside("minorFont")) {
      if (theme.fontFamily.empty()) theme.fontFamily = attribute("typeface");
    } else if (parent == "fillStyleLst") {
      if (!inside("fmtConnectorScheme")) theme.fills.emplace_back();
    } else if (name == "lin" && inside("fillStyleLst") && !theme.fills.empty()) {
      theme.fills.back().angle = number("ang", 0) / 60000.0 * G_PI / 180;
    } else if (name == "path" && inside("fillStyleLst") && !theme.fills.empty()) {
      theme.fills.back().radial = true;
    } else if (name == "gs") {
      offset_ = number("pos", 0) / 100000.0;
    } else if (name == "ln" && parent == "lnStyleLst") {
      std::vector<ThemeLine>& lines = inside("fmtConnectorScheme") ? theme.connectorLines : theme.lines;
      lines.emplace_back();
      lines.back().weight = number("w", 9525) / 12700.0;
    } else if (name == "lineEx") {
      lineDetail(number("rndg", 0), number("pattern", 1), number("start", 0), number("end", 0), number("startSize", 2),
                 number("endSize", 2));
    } else if (name == "fontProps") {
      (inside("connectorFontStyles") ? theme.connectorFonts : theme.fonts).push_back({{}, number("style", 0)});
    } else if (name == "variationStyleScheme") {
      theme.variationStyles.push_back({});
      variationStyle_ = 0;
    } else if (name == "varStyle" && !theme.variationStyles.empty() && variationStyle_ < 4) {
      theme.variationStyles.back()[variationStyle_++] = {number("fillIdx", 1), number("lineIdx", 1),
                                                         number("effectIdx", 1), number("fontIdx", 1)};
    }
    stack_.emplace_back(name);
  }

  void end(std::string_view name) {
    if (!stack_.empty()) stack_.pop_back();
    if (colourDepth_ > 0 && --colourDepth_ == 0) giveColour();
    if (name == "lineStyle") ++(inside("fmtConnectorSchemeLineStyles") ? connectorLine_ : line_);
  }

 private:
  bool inside(std::string_view name) const {
    for (const std::string& element : stack_)
      if (element == name) return true;
    return false;
  }

  void beginColour(std::string_view kind, std::string_view value) {
    ++colourDepth_;
    if (colourDepth_ > 1) return;
    colour_ = {};
    if (kind == "schemeClr") {
      const int index = schemeIndex(value);
      if (index >= 0) {
        colour_.base = ThemeColour::Scheme;
        colour_.scheme = index;
      }
    } else {
      colour_.base = ThemeColour::Fixed;
      std::from_chars(value.data(), value.data() + value.size(), colour_.rgb, 16);
    }
  }

  void change(std::string_view name, double amount) {
    ++colourDepth_;  // its end comes like the colour's own
    static constexpr std::pair<std::string_view, ThemeColour::Change> changes[] = {
        {"tint", ThemeColour::Tint},
        {"shade", ThemeColour::Shade},
        {"lumMod", ThemeColour::LuminanceFactor},
        {"lumOff", ThemeColour::LuminanceShift},
        {"satMod", ThemeColour::SaturationFactor},
        {"alpha", ThemeColour::Alpha},
    };
    for (const auto& [known, kind] : changes)
      if (known == name) colour_.changes.emplace_back(kind, amount);
    if (name == "hueOff") colour_.changes.emplace_back(ThemeColour::HueShift, amount * 100000.0 / 60000 / 360);
  }

  void giveColour() {
    if (stack_.empty()) return;
    const std::string& parent = stack_.back();
    const std::uint32_t plain = theme.resolve(colour_, 0);
    if (parent.starts_with("varColor") && !theme.variationColours.empty()) {
      const int index = parent.back() - '1';
      if (index >= 0 && index < 7) theme.variationColours.back().colours[std::size_t(index)] = plain;
    } else if (parent == "bkgnd") {
      theme.background = plain;
    } else if (inside("fillStyleLst")) {
      if (!theme.fills.empty() && !inside("fmtConnectorScheme"))
        theme.fills.back().stops.push_back({parent == "gs" ? offset_ : 0, colour_});
    } else if (inside("lnStyleLst")) {
      std::vector<ThemeLine>& lines = inside("fmtConnectorScheme") ? theme.connectorLines : theme.lines;
      if (!lines.empty()) lines.back().colour = colour_;
    } else if (inside("fontProps")) {
      std::vector<ThemeFont>& fonts = inside("connectorFontStyles") ? theme.connectorFonts : theme.fonts;
      if (!fonts.empty()) fonts.back().colour = colour_;
    } else if (stack_.size() >= 2 && stack_[stack_.size() - 2] == "clrScheme") {
      if (const int index = schemeIndex(parent); index >= 0) theme.colours[std::size_t(index)] = plain;
    }
  }

  void lineDetail(int rounding, int pattern, int begin, int end, int beginSize, int endSize) {
    const bool connector = inside("fmtConnectorSchemeLineStyles");
    std::vector<ThemeLine>& lines = connector ? theme.connectorLines : theme.lines;
    // The first of these means "no style" and has no line of its own.
    const std::size_t at = (connector ? connectorLine_ : line_) - 1;
    if (at >= lines.size()) return;
    lines[at].rounding = rounding / 1200.0;
    lines[at].pattern = pattern;
    lines[at].beginArrow = begin;
    lines[at].endArrow = end;
    lines[at].beginSize = beginSize;
    lines[at].endSize = endSize;
  }

  std::vector<std::string> stack_;
  ThemeColour colour_;
  int colourDepth_ = 0;
  double offset_ = 0;
  std::size_t variationStyle_ = 0, line_ = 0, connectorLine_ = 0;
};

void onStart(GMarkupParseContext*, const gchar* name, const gchar** names, const gchar** values, gpointer reader,
             GError**) {
  static_cast<Reader*>(reader)->start(name, names, values);
}
void onEnd(GMarkupParseContext*, const gchar* name, gpointer reader, GError**) {
  static_cast<Reader*>(reader)->end(localName(name));
}

}  // namespace

Maybe<Theme> readTheme(std::string_view xml) {
  const GMarkupParser parser{onStart, onEnd, nullptr, nullptr, nullptr};
  Reader reader;
  GMarkupParseContext* context = g_markup_parse_context_new(&parser, GMarkupParseFlags(0), &reader, nullptr);
  const bool read = g_markup_parse_context_parse(context, xml.data(), gssize(xml.size()), nullptr) &&
                    g_markup_parse_context_end_parse(context, nullptr);
  g_markup_parse_context_free(context);
  if (!read || !reader.isTheme) return {};
  return std::move(reader.theme);
}

}  // namespace quorvel::render
