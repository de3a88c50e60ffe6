#include "render/svg/writer.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "render/scene/hatch.h"
#include "render/svg/markup.h"
#include "render/text/fonts.h"

namespace quorvel::render {
namespace {

using namespace svg;

class Writer {
 public:
  explicit Writer(const Scene& scene) : scene_(scene) {}

  std::string write() {
    out_.reserve(scene_.items.size() * 150);
    out_ +=
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
        "xmlns:xlink=\"http://www.w3.org/1999/xlink\" version=\"1.1\"";
    attribute("width", scene_.width);
    out_.insert(out_.size() - 1, "pt");
    attribute("height", scene_.height);
    out_.insert(out_.size() - 1, "pt");
    out_ += " viewBox=\"0 0 ";
    numbers({scene_.width, scene_.height});
    out_ +=
        "\" fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" "
        "style=\"font-kerning:none;font-variant-ligatures:none\">\n";
    if (!scene_.title.empty()) {
      out_ += "<title>";
      appendEscaped(out_, scene_.title);
      out_ += "</title>\n";
    }
    if (scene_.background.opacity > 0) {
      out_ += "<rect width=\"100%\" height=\"100%\"";
      paint("fill", scene_.background);
      out_ += "/>\n";
    }
    for (const SceneItem& item : scene_.items)
      if (const auto* image = std::get_if<ImageItem>(&item)) ++uses_[image->bytes.get()];
    for (const SceneItem& item : scene_.items) std::visit([this](const auto& each) { add(each); }, item);
    while (!open_.empty()) add(ShapeEnd{});
    out_ += "</svg>\n";
    return std::move(out_);
  }

 private:
  void attribute(const char* name, double number, int digits = 3) {
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    appendNumber(out_, number, digits);
    out_ += '"';
  }
  void attribute(const char* name, std::string_view text) {
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    appendEscaped(out_, text);
    out_ += '"';
  }
  void numbers(std::initializer_list<double> list, int digits = 3) {
    bool first = true;
    for (double number : list) {
      if (!first) out_ += ' ';
      first = false;
      appendNumber(out_, number, digits);
    }
  }
  void transform(const Matrix& matrix) {
    if (matrix == Matrix()) return;
    out_ += " transform=\"";
    if (matrix.a == 1 && matrix.b == 0 && matrix.c == 0 && matrix.d == 1) {
      out_ += "translate(";
      numbers({matrix.e, matrix.f});
    } else {
      out_ += "matrix(";
      numbers({matrix.a, matrix.b, matrix.c, matrix.d}, 6);
      out_ += ' ';
      numbers({matrix.e, matrix.f});
    }
    out_ += ")\"";
  }
  void paint(const char* name, const Colour& colour) {
    out_ += ' ';
    out_ += name;
    out_ += "=\"";
    appendColour(out_, colour.rgb);
    out_ += '"';
    if (colour.opacity < 1) {
      out_ += ' ';
      out_ += name;
      out_ += "-opacity=\"";
      appendNumber(out_, colour.opacity);
      out_ += '"';
    }
  }
  void pathData(const Path& path) {
    const auto points = path.points();
    std::size_t at = 0;
    const auto put = [&](char letter, int count) {
      out_ += letter;
      for (int i = 0; i < count; ++i, ++at) {
        if (i > 0) out_ += ' ';
        appendNumber(out_, points[at].x);
        out_ += ' ';
        appendNumber(out_, points[at].y);
      }
    };
    for (PathVerb verb : path.verbs()) {
      switch (verb) {
        case PathVerb::MoveTo:
          put('M', 1);
          break;
        case PathVerb::LineTo:
          put('L', 1);
          break;
        case PathVerb::CurveTo:
          put('C', 3);
          break;
        case PathVerb::Close:
          out_ += 'Z';
          break;
      }
    }
  }

  /// Definitions are written once, before the element that needs them first.
  std::string defined(const std::string& prefix, const std::string& content, const char* element) {
    const auto [place, isNew] = definitions_.try_emplace(element + content, "");
    if (isNew) {
      place->second = scene_.idPrefix + prefix + std::to_string(definitions_.size());
      out_ += "<defs><";
      out_ += element;
      out_ += " id=\"" + place->second + "\"" + content + "</" + element + "></defs>\n";
    }
    return place->second;
  }
  /// Runs `write` and gives what it wrote instead of adding it.
  template <class Write>
  std::string written(Write write) {
    std::string kept;
    kept.swap(out_);
    write();
    kept.swap(out_);
    return kept;
  }

  std::string define(const Gradient& gradient) {
    const std::string content = written([&] {
      attribute("gradientUnits", std::string_view("userSpaceOnUse"));
      if (gradient.radial) {
        attribute("cx", gradient.from.x), attribute("cy", gradient.from.y), attribute("r", gradient.radius);
      } else {
        attribute("x1", gradient.from.x), attribute("y1", gradient.from.y);
        attribute("x2", gradient.to.x), attribute("y2", gradient.to.y);
      }
      out_ += '>';
      for (const GradientStop& stop : gradient.stops) {
        out_ += "<stop";
        attribute("offset", stop.offset);
        out_ += " stop-color=\"";
        appendColour(out_, stop.colour.rgb);
        out_ += '"';
        if (stop.colour.opacity < 1) attribute("stop-opacity", stop.colour.opacity);
        out_ += "/>";
      }
    });
    return defined("gradient", content, gradient.radial ? "radialGradient" : "linearGradient");
  }
  std::string define(const Pattern& pattern) {
    const std::string content = written([&] {
      const PatternTile tile = patternTile(pattern.number);
      attribute("patternUnits", std::string_view("userSpaceOnUse"));
      attribute("width", tile.size), attribute("height", tile.size);
      out_ += '>';
      if (pattern.ground.opacity > 0) {
        out_ += "<rect";
        attribute("width", tile.size), attribute("height", tile.size);
        paint("fill", pattern.ground);
        out_ += "/>";
      }
      if (!tile.lines.isEmpty()) {
        out_ += "<path d=\"";
        pathData(tile.lines);
        out_ += '"';
        paint("stroke", pattern.ink);
        attribute("stroke-width", tile.lineWidth);
        out_ += "/>";
      }
      if (!tile.areas.isEmpty()) {
        out_ += "<path d=\"";
        pathData(tile.areas);
        out_ += '"';
        paint("fill", pattern.ink);
        out_ += "/>";
      }
    });
    return defined("hatch", content, "pattern");
  }

  void add(const ShapeBegin& begin) {
    out_ += "<g";
    if (begin.shapeId != 0) attribute("data-shape", double(begin.shapeId), 0);
    if (!begin.name.empty()) attribute("data-name", begin.name);
    for (const auto& [name, value] : begin.data) attribute(("data-" + name).c_str(), value);
    const bool isInDrawing = begin.link.starts_with('#');
    if (isInDrawing) attribute("data-link", begin.link.substr(1));
    out_ += ">\n";
    open_.push_back(!begin.link.empty() && !isInDrawing);
    if (!open_.back()) return;
    out_ += "<a";
    attribute("xlink:href", begin.link);
    if (!begin.linkTitle.empty()) attribute("xlink:title", begin.linkTitle);
    out_ += ">\n";
  }
  void add(const ShapeEnd&) {
    if (open_.empty()) return;
    out_ += open_.back() ? "</a></g>\n" : "</g>\n";
    open_.pop_back();
  }

  void add(const PathItem& item) {
    std::string reference;
    if (const auto* gradient = std::get_if<Gradient>(&item.fill)) reference = define(*gradient);
    if (const auto* pattern = std::get_if<Pattern>(&item.fill)) reference = define(*pattern);
    if (item.blur > 0) return addShadow(item);
    std::string strokeReference;
    if (item.stroke.visible && item.stroke.gradient) strokeReference = define(*item.stroke.gradient);
    out_ += "<path d=\"";
    pathData(item.path);
    out_ += '"';
    if (const auto* colour = std::get_if<Colour>(&item.fill)) paint("fill", *colour);
    if (!reference.empty()) attribute("fill", "url(#" + reference + ")");
    evenOdd(item);
    if (item.stroke.visible) {
      if (strokeReference.empty())
        paint("stroke", item.stroke.colour);
      else
        attribute("stroke", "url(#" + strokeReference + ")");
      strokeShape(item.stroke);
    }
    out_ += "/>\n";
  }
  /// Fill and line as one area, made soft as a whole.
  void addShadow(const PathItem& item) {
    const auto* fill = std::get_if<Colour>(&item.fill);
    const Colour colour = fill ? *fill : item.stroke.colour;
    // The filter's own area must hold all that the smear reaches.
    Box area = boundsOf(item.path);
    const double reach = 3 * item.blur + (item.stroke.visible ? item.stroke.width : 0);
    area = {area.left - reach, area.top - reach, area.right + reach, area.bottom + reach};
    const std::string filter = defined("soft", written([&] {
                                         attribute("filterUnits", std::string_view("userSpaceOnUse"));
                                         attribute("x", area.left), attribute("y", area.top);
                                         attribute("width", area.width()), attribute("height", area.height());
                                         out_ += "><feGaussianBlur";
                                         attribute("stdDeviation", item.blur);
                                         out_ += "/>";
                                       }),
                                       "filter");
    out_ += "<path d=\"";
    pathData(item.path);
    out_ += '"';
    if (fill) paint("fill", {colour.rgb, 1});
    evenOdd(item);
    if (item.stroke.visible) {
      paint("stroke", {colour.rgb, 1});
      strokeShape(item.stroke);
    }
    if (colour.opacity < 1) attribute("opacity", colour.opacity);
    attribute("filter", "url(#" + filter + ")");
    out_ += "/>\n";
  }
  void evenOdd(const PathItem& item) {
    if (!std::holds_alternative<std::monostate>(item.fill) && item.path.verbs().size() > 1) {
      const auto verbs = item.path.verbs();
      if (std::count(verbs.begin(), verbs.end(), PathVerb::MoveTo) > 1)
        attribute("fill-rule", std::string_view("evenodd"));
    }
  }
  void strokeShape(const Stroke& stroke) {
    attribute("stroke-width", stroke.width);
    if (stroke.cap != LineCap::Round)
      attribute("stroke-linecap", std::string_view(stroke.cap == LineCap::Butt ? "butt" : "square"));
    if (!stroke.dashes.empty()) {
      out_ += " stroke-dasharray=\"";
      bool first = true;
      for (double dash : stroke.dashes) {
        if (!first) out_ += ' ';
        first = false;
        appendNumber(out_, dash);
      }
      out_ += '"';
    }
  }

  void add(const ClipBegin& begin) {
    const std::string clip = defined("clip", written([&] {
                                       out_ += "><path clip-rule=\"evenodd\" d=\"";
                                       pathData(begin.path);
                                       out_ += "\"/>";
                                     }),
                                     "clipPath");
    out_ += "<g clip-path=\"url(#" + clip + ")\">\n";
    ++openClips_;
  }
  void add(const ClipEnd&) {
    if (openClips_ == 0) return;
    --openClips_;
    out_ += "</g>\n";
  }

  const std::string& familyList(const std::string& family) {
    const auto [place, isNew] = families_.try_emplace(family);
    if (isNew) place->second = familyWithStandIns(family);
    return place->second;
  }
  void styleAttributes(const TextStyle& style) {
    attribute("font-family", familyList(style.family));
    attribute("font-size", style.size);
    if (style.bold) attribute("font-weight", std::string_view("bold"));
    if (style.italic) attribute("font-style", std::string_view("italic"));
    if (style.smallCaps) attribute("font-variant", std::string_view("small-caps"));
    if (style.letterSpacing != 0) attribute("letter-spacing", style.letterSpacing);
    paint("fill", style.colour);
  }

  void add(const TextItem& item) {
    const TextLayout& layout = *item.layout;
    if (item.background.opacity > 0) {
      out_ += "<path class=\"paper\" d=\"";
      Path box;
      for (const TextLine& line : layout.lines)
        if (line.width > 0) box.addRectangle(line.left, line.top, line.left + line.width, line.top + line.height);
      pathData(box);
      out_ += '"';
      transform(item.transform);
      paint("fill", item.background);
      out_ += "/>\n";
    }
    const TextRun* first = nullptr;
    for (const TextLine& line : layout.lines)
      if (!first && !line.runs.empty()) first = &line.runs.front();
    if (!first) return;
    const int common = first->style;
    out_ += "<text xml:space=\"preserve\"";
    transform(item.transform);
    styleAttributes(layout.styles[std::size_t(common)]);
    out_ += '>';
    for (const TextLine& line : layout.lines) {
      for (const TextRun& run : line.runs) {
        const TextStyle& style = layout.styles[std::size_t(run.style)];
        out_ += "<tspan";
        attribute("x", run.x), attribute("y", run.baseline);
        if (run.style != common) {
          styleAttributes(style);
          const TextStyle& outer = layout.styles[std::size_t(common)];
          if (outer.bold && !style.bold) attribute("font-weight", std::string_view("normal"));
          if (outer.italic && !style.italic) attribute("font-style", std::string_view("normal"));
          if (outer.smallCaps && !style.smallCaps) attribute("font-variant", std::string_view("normal"));
          if (outer.letterSpacing != 0 && style.letterSpacing == 0) attribute("letter-spacing", 0.0);
        }
        std::string decoration;
        if (style.underline || style.doubleUnderline) decoration = "underline";
        if (style.strikethrough) decoration += decoration.empty() ? "line-through" : " line-through";
        if (!decoration.empty()) attribute("text-decoration", decoration);
        if (run.stretched) attribute("textLength", run.width);
        out_ += '>';
        appendEscaped(out_, run.text);
        out_ += "</tspan>";
      }
    }
    out_ += "</text>\n";
  }

  void imageData(const ImageItem& item) {
    out_ += " preserveAspectRatio=\"none\" xlink:href=\"data:";
    out_ += item.mediaType;
    out_ += ";base64,";
    appendBase64(out_, *item.bytes);
    out_ += "\"/>";
  }
  void add(const ImageItem& item) {
    if (!item.bytes) return;
    std::string clip;
    if (!item.clip.isEmpty())
      clip = defined("clip", written([&] {
                       out_ += "><path d=\"";
                       pathData(item.clip);
                       out_ += "\"/>";
                     }),
                     "clipPath");
    if (!clip.empty()) out_ += "<g clip-path=\"url(#" + clip + ")\">";
    const Matrix& m = item.transform;
    if (uses_[item.bytes.get()] > 1) {
      // Written once and shown often.
      const auto [place, isNew] = images_.try_emplace(item.bytes.get(), int(images_.size()) + 1);
      const std::string id = scene_.idPrefix + "image" + std::to_string(place->second);
      if (isNew) {
        out_ += "<defs><image id=\"" + id + "\" width=\"1\" height=\"1\"";
        imageData(item);
        out_ += "</defs>\n";
      }
      out_ += "<use xlink:href=\"#" + id + "\"";
      transform(m);
      if (item.opacity < 1) attribute("opacity", item.opacity);
      out_ += "/>";
    } else {
      out_ += "<image";
      if (m.b == 0 && m.c == 0 && m.a > 0 && m.d > 0) {
        attribute("x", m.e), attribute("y", m.f), attribute("width", m.a), attribute("height", m.d);
      } else {
        attribute("width", 1.0), attribute("height", 1.0);
        transform(m);
      }
      if (item.opacity < 1) attribute("opacity", item.opacity);
      imageData(item);
    }
    out_ += clip.empty() ? "\n" : "</g>\n";
  }

  const Scene& scene_;
  std::string out_;
  std::vector<bool> open_;  ///< for each open shape: it is a link
  int openClips_ = 0;
  std::unordered_map<std::string, std::string> definitions_, families_;
  std::unordered_map<const std::string*, int> uses_, images_;
};

}  // namespace

std::string writeSvg(const Scene& scene) { return Writer(scene).write(); }

}  // namespace quorvel::render
