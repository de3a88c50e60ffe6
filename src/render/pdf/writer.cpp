#include "render/pdf/writer.h"

#include <cairo-pdf.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <vector>

#include "base/text.h"
#include "render/cairo/images.h"
#include "render/cairo/scene_painter.h"
#include "render/scene/box.h"

namespace quorvel::render {
namespace {

cairo_status_t append(void* text, const unsigned char* bytes, unsigned count) {
  static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
  return CAIRO_STATUS_SUCCESS;
}

/// A text as an attribute of a tag holds it.
std::string quotedAttribute(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "'";
}

/// The painting library writes an address into a string of the document as it is, and a bracket or a backslash would
/// end that string, so that what follows became part of the document.
std::string uriInDocument(std::string_view uri) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text;
  for (const char c : uri) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= ' ' || byte > '~' || c == '(' || c == ')' || c == '\\') {
      text += {'%', digits[byte >> 4], digits[byte & 15]};
    } else {
      text += c;
    }
  }
  return text;
}

/// The top left corner of what is drawn of a shape and its members; `begin` is its place among the items.
Point cornerOf(const Scene& page, std::size_t begin) {
  Box box;
  int depth = 0;
  for (std::size_t i = begin; i < page.items.size(); ++i) {
    const SceneItem& item = page.items[i];
    if (std::holds_alternative<ShapeBegin>(item)) ++depth;
    if (std::holds_alternative<ShapeEnd>(item) && --depth == 0) break;
    if (const auto* path = std::get_if<PathItem>(&item)) box.add(boundsOf(path->path));
    if (const auto* image = std::get_if<ImageItem>(&item)) {
      for (const Point corner : {Point{0, 0}, Point{1, 0}, Point{0, 1}, Point{1, 1}}) box.add(image->transform(corner));
    }
    if (const auto* text = std::get_if<TextItem>(&item)) box.add(text->transform({0, 0}));
  }
  return box.isEmpty() ? Point{} : Point{box.left, box.top};
}

/// Writes the tags in addition to the picture: where links lead, and what they lead to.
class Tags {
 public:
  Tags(cairo_t* target, std::span<const Scene> pages) : target_(target) {
    for (const Scene& page : pages) {
      places_.emplace(foldCase(page.title), Point{});
      for (const SceneItem& item : page.items) {
        if (const auto* shape = std::get_if<ShapeBegin>(&item)) {
          if (shape->link.starts_with('#')) wanted_.insert(foldCase(shape->link.substr(1)));
        }
      }
    }
    // Only what is linked to gets a place of its own.
    for (const Scene& page : pages) {
      for (std::size_t i = 0; i < page.items.size(); ++i) {
        const auto* const shape = std::get_if<ShapeBegin>(&page.items[i]);
        if (!shape) continue;
        const std::string place = placeOf(page, *shape);
        if (!wanted_.contains(place) || places_.contains(place)) continue;
        const Point corner = cornerOf(page, i);
        places_.emplace(place, Point{std::max(corner.x - margin, 0.0), std::max(corner.y - margin, 0.0)});
      }
    }
  }

  void beginPage(const Scene& page) {
    page_ = &page;
    putPlace(foldCase(page.title));
  }

  void beginShape(const ShapeBegin& shape) {
    if (const std::string place = placeOf(*page_, shape); wanted_.contains(place)) putPlace(place);
    const std::string link = linkAttributes(shape.link);
    // A tag must not be inside another of its kind: a member's link interrupts its group's.
    if (!link.empty()) {
      if (!current().empty()) cairo_tag_end(target_, CAIRO_TAG_LINK);
      cairo_tag_begin(target_, CAIRO_TAG_LINK, link.c_str());
    }
    open_.push_back(link);
  }

  void endShape() {
    const bool hadLink = !open_.back().empty();
    open_.pop_back();
    if (!hadLink) return;
    cairo_tag_end(target_, CAIRO_TAG_LINK);
    if (const std::string outer = current(); !outer.empty()) cairo_tag_begin(target_, CAIRO_TAG_LINK, outer.c_str());
  }

 private:
  /// Places are found in any letter case, as the host finds pages and shapes.
  static std::string placeOf(const Scene& page, const ShapeBegin& shape) {
    return foldCase(page.title + "/" + shape.name);
  }

  std::string current() const {
    for (auto each = open_.rbegin(); each != open_.rend(); ++each)
      if (!each->empty()) return *each;
    return {};
  }

  std::string linkAttributes(const std::string& link) const {
    if (link.starts_with('#')) {
      std::string place = foldCase(link.substr(1));
      // A page's name may have a "/" as well.
      while (!places_.contains(place) && place.find('/') != std::string::npos) place.erase(place.rfind('/'));
      return places_.contains(place) ? "dest=" + quotedAttribute(place) : std::string();
    }
    return link.empty() ? link : "uri=" + quotedAttribute(uriInDocument(link));
  }

  void putPlace(const std::string& name) {
    if (!placed_.insert(name).second) return;
    const Point place = places_.at(name);
    const std::string attributes = "name=" + quotedAttribute(name) + " x=" + shortestNumber(std::round(place.x)) +
                                   " y=" + shortestNumber(std::round(place.y));
    cairo_tag_begin(target_, CAIRO_TAG_DEST, attributes.c_str());
    cairo_tag_end(target_, CAIRO_TAG_DEST);
  }

  static constexpr double margin = 36;  ///< points that are shown above and to the left of a shape

  cairo_t* target_;
  const Scene* page_ = nullptr;
  std::set<std::string> wanted_, placed_;
  std::map<std::string, Point> places_;  ///< what a viewer shows in its upper left corner
  std::vector<std::string> open_;        ///< for each open shape the attributes of its link; empty: none
};

}  // namespace

std::string writePdf(std::span<const Scene> pages, std::string_view title) {
  std::string bytes;
  const CairoSurface surface(cairo_pdf_surface_create_for_stream(append, &bytes, 1, 1));
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, std::string(title).c_str());
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATOR, "Quorvel");
  cairo_t* target = cairo_create(surface.get());
  Tags tags(target, pages);
  ScenePainter painter;
  painter.onShapeBegin = [&](const ShapeBegin& shape) { tags.beginShape(shape); };
  painter.onShapeEnd = [&] { tags.endShape(); };
  int number = 0;
  for (const Scene& page : pages) {
    cairo_pdf_surface_set_size(surface.get(), page.width, page.height);
    const std::string link = "page=" + std::to_string(++number);
    cairo_pdf_surface_add_outline(surface.get(), CAIRO_PDF_OUTLINE_ROOT, page.title.c_str(), link.c_str(),
                                  cairo_pdf_outline_flags_t(0));
    tags.beginPage(page);
    painter.paint(target, page);
    cairo_show_page(target);
  }
  const bool painted = cairo_status(target) == CAIRO_STATUS_SUCCESS;
  cairo_destroy(target);
  cairo_surface_finish(surface.get());
  return painted && cairo_surface_status(surface.get()) == CAIRO_STATUS_SUCCESS ? bytes : std::string();
}

}  // namespace quorvel::render
