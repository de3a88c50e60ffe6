#include "render/build/shape_builder.h"

#include <algorithm>
#include <charconv>

#include "base/link_address.h"
#include "base/text.h"
#include "render/build/arrowheads.h"
#include "render/build/line_style.h"
#include "render/build/shape_geometry.h"
#include "render/cells/colours.h"
#include "render/cells/fill.h"
#include "render/images/image.h"
#include "render/scene/drawable.h"
#include "render/text/vertical.h"

namespace quorvel::render {
namespace {

/// Groups in groups: real drawings have a handful of levels, a broken file must not exhaust the stack.
constexpr int deepestGroup = 200;

Path cornersOf(const Matrix& matrix, double left, double bottom, double right, double top) {
  Path path;
  path.addRectangle(left, bottom, right, top);
  path.transform(matrix);
  return path;
}

bool paints(const Fill& fill) { return !std::holds_alternative<std::monostate>(fill); }

/// What encloses an area, with its ends joined: a path need not be closed to be filled.
void appendFilled(Path& fill, const Path& path) {
  for (const Path& subpath : subpathsOf(path)) {
    if (subpath.points().size() < 3) continue;
    fill.append(subpath);
    if (!isClosed(subpath)) fill.close();
  }
}

bool allClosed(const Path& path) {
  const auto verbs = path.verbs();
  for (std::size_t i = 0; i < verbs.size(); ++i)
    if (verbs[i] == PathVerb::MoveTo && i > 0 && verbs[i - 1] != PathVerb::Close) return false;
  return !verbs.empty() && verbs.back() == PathVerb::Close;
}

/// A shadow: the item in one colour, moved.
PathItem shadowOf(const PathItem& item, const ShadowStyle& shadow) {
  PathItem copy = item;
  copy.path.transform(Matrix::translation(shadow.offset.x, shadow.offset.y));
  if (paints(copy.fill)) copy.fill = shadow.colour;
  copy.stroke.colour = shadow.colour;
  copy.stroke.gradient = nullptr;
  copy.blur = shadow.blur;
  return copy;
}

}  // namespace

ShapeFrame frameOf(const ShapeCells& cells) {
  const ObjectKeys& keys = objectKeys();
  ShapeFrame frame;
  frame.width = cells.number(keys.Width);
  frame.height = cells.number(keys.Height);
  const double localX = cells.heldNumber(keys.LocPinX, frame.width / 2);
  const double localY = cells.heldNumber(keys.LocPinY, frame.height / 2);
  Matrix matrix = Matrix::translation(cells.number(keys.PinX), cells.number(keys.PinY));
  if (const double angle = cells.number(keys.Angle); angle != 0) matrix = matrix * Matrix::rotation(angle);
  const bool flipX = cells.flag(keys.FlipX), flipY = cells.flag(keys.FlipY);
  if (flipX || flipY) matrix = matrix * Matrix::scaling(flipX ? -1 : 1, flipY ? -1 : 1);
  frame.toParent = matrix * Matrix::translation(-localX, -localY);
  return frame;
}

void ShapeBuilder::add(host::SheetId id, const Matrix& parentToPage, bool parentVisible, int depth) {
  const host::Sheet* sheet = page_.store.sheet(id);
  if (!sheet || sheet->kind == host::SheetKind::Guide || depth > deepestGroup) return;
  const ShapeCells cells(page_.store, id);
  const bool visible = isVisible(cells, parentVisible);
  if (!visible && sheet->children.empty()) return;
  const ShapeFrame frame = frameOf(cells);
  const Matrix toPage = parentToPage * frame.toParent;
  const ThemeChoice outer = page_;
  if (!themes_.empty()) static_cast<ThemeChoice&>(page_) = themeChosenBy(cells, themes_, outer);

  ShapeBegin begin{id, sheet->shapeId, page_.store.shapeName(*sheet), {}, {}};
  setLink(cells, begin);
  scene_.items.emplace_back(std::move(begin));
  // A group shows its own geometry behind its members, before them, or not at all.
  const int mode = sheet->children.empty() ? 1 : cells.integer(objectKeys().DisplayMode, 2);
  const bool showsOwn = visible && mode != 0;
  if (showsOwn && mode == 1) addOwn(cells, frame, toPage);
  for (host::SheetId child : sheet->children) add(child, toPage, visible, depth + 1);
  if (showsOwn && mode != 1) addOwn(cells, frame, toPage);
  scene_.items.emplace_back(ShapeEnd{});
  static_cast<ThemeChoice&>(page_) = outer;
}

void ShapeBuilder::put(SceneItem item) {
  const bool canBeDrawn = std::visit(
      [](auto& each) {
        if constexpr (requires { makeDrawable(each); }) {
          return makeDrawable(each);
        } else if constexpr (requires { isDrawable(each); }) {
          return isDrawable(each);
        } else {
          return true;
        }
      },
      item);
  if (canBeDrawn) scene_.items.push_back(std::move(item));
}

bool ShapeBuilder::isVisible(const ShapeCells& cells, bool parentVisible) const {
  const std::string layers = cells.text(objectKeys().LayerMember);
  bool hasLayer = false;
  for (std::string_view piece : splitAt(layers, ';')) {
    piece = trimmed(piece);
    std::size_t layer = 0;
    if (std::from_chars(piece.data(), piece.data() + piece.size(), layer).ec != std::errc()) continue;
    if (layer >= page_.layerVisible.size()) continue;
    hasLayer = true;
    if (page_.layerVisible[layer]) return true;
  }
  // Who is on no layer goes with the group.
  return hasLayer ? false : parentVisible;
}

void ShapeBuilder::addOwn(const ShapeCells& cells, const ShapeFrame& frame, const Matrix& toPage) {
  addGeometry(cells, toPage);
  addPicture(cells, frame, toPage);
  addText(cells, frame, toPage);
}

void ShapeBuilder::addGeometry(const ShapeCells& cells, const Matrix& toPage) {
  std::vector<GeometrySection> sections = geometryOf(cells);
  if (sections.empty()) return;
  LineStyle line = lineStyleOf(page_, cells);
  for (GeometrySection& section : sections) section.path = roundCorners(section.path, line.rounding);

  // All filled sections share one fill, so that where they overlap there are holes.
  Path filled, stroked;
  bool oneOutline = true;
  for (const GeometrySection& section : sections) {
    if (section.filled) appendFilled(filled, section.path);
    if (section.stroked && line.stroke.visible) stroked.append(section.path);
    oneOutline = oneOutline && section.filled && section.stroked && allClosed(section.path);
  }
  if (line.gradient.kind != FillStyle::None && !stroked.isEmpty())
    if (const Fill placed = placedFill(line.gradient, boundsOf(stroked), toPage);
        const auto* gradient = std::get_if<Gradient>(&placed))
      line.stroke.gradient = std::make_shared<const Gradient>(*gradient);
  std::vector<PathItem> items;
  Fill fill;
  if (!filled.isEmpty()) fill = placedFill(fillStyleOf(page_, cells), boundsOf(filled), toPage);
  if (paints(fill)) {
    filled.transform(toPage);
    items.push_back({std::move(filled), std::move(fill), {}});
    if (oneOutline && line.stroke.visible) {
      items.back().stroke = line.stroke;
      stroked = {};
    }
  }
  if (!stroked.isEmpty()) {
    stroked.transform(toPage);
    std::vector<PathItem> heads;
    stroked = withArrowheads(stroked, line, heads);
    if (items.empty() && cells.held(objectKeys().BeginX)) stroked = stems_.withoutPainted(stroked, line.stroke);
    if (!stroked.isEmpty()) items.push_back({std::move(stroked), {}, line.stroke});
    std::move(heads.begin(), heads.end(), std::back_inserter(items));
  }
  if (const ShadowStyle shadow = shadowStyleOf(page_, cells); shadow.visible)
    for (const PathItem& item : items) put(shadowOf(item, shadow));
  for (PathItem& item : items) put(std::move(item));
}

void ShapeBuilder::addPicture(const ShapeCells& cells, const ShapeFrame& frame, const Matrix& toPage) {
  const host::ForeignData* foreign = host::foreignOf(page_.store, cells.sheet());
  if (!foreign || frame.width <= 0 || frame.height <= 0) return;
  const ObjectKeys& keys = objectKeys();
  // Instances share their master's image.
  const auto [known, isNew] = pictures_.try_emplace(foreign);
  if (isNew) known->second = imageOf(*foreign, text_);
  const Picture& picture = known->second;
  if (!picture.bytes && picture.items.empty()) {
    // An image that we cannot show still has its frame.
    PathItem box{cornersOf(toPage, 0, 0, frame.width, frame.height), Colour{0xF2F2F2, 1}, {}};
    box.stroke = {true, {0xA0A0A0, 1}, 0.5, LineCap::Butt, {}};
    put(std::move(box));
    return;
  }
  const double x = cells.number(keys.ImgOffsetX), y = cells.number(keys.ImgOffsetY);
  double width = cells.heldNumber(keys.ImgWidth, frame.width), height = cells.heldNumber(keys.ImgHeight, frame.height);
  if (width <= 0) width = frame.width;
  if (height <= 0) height = frame.height;
  // The unit square's top edge is the image's upper one.
  const Matrix place = toPage * Matrix{width, 0, 0, -height, x, y + height};
  const double slack = 1e-3 * std::max(frame.width, frame.height);
  const bool inside =
      x >= -slack && y >= -slack && x + width <= frame.width + slack && y + height <= frame.height + slack;
  Path clip;
  if (!inside) clip = cornersOf(toPage, 0, 0, frame.width, frame.height);
  if (!picture.bytes) {
    if (!inside) put(ClipBegin{std::move(clip)});
    for (const SceneItem& item : picture.items) put(placed(item, place));
    if (!inside) put(ClipEnd{});
    return;
  }
  ImageItem item;
  item.mediaType = picture.mediaType;
  item.bytes = picture.bytes;
  item.transform = place;
  item.clip = std::move(clip);
  item.opacity = 1 - std::clamp(cells.number(keys.Transparency), 0.0, 1.0);
  put(std::move(item));
}

void ShapeBuilder::addText(const ShapeCells& cells, const ShapeFrame& frame, const Matrix& toPage) {
  const ObjectKeys& keys = objectKeys();
  if (cells.flag(keys.HideText)) return;
  const StyledText text = styledTextOf(page_, cells);
  if (text.paragraphs.empty()) return;

  const double scale = toPage.scale();
  if (!(scale > 0)) return;
  const double width = cells.heldNumber(keys.TxtWidth, frame.width),
               height = cells.heldNumber(keys.TxtHeight, frame.height);
  const double pinX = cells.heldNumber(keys.TxtPinX, frame.width / 2);
  const double pinY = cells.heldNumber(keys.TxtPinY, frame.height / 2);
  const double localX = cells.heldNumber(keys.TxtLocPinX, width / 2);
  const double localY = cells.heldNumber(keys.TxtLocPinY, height / 2);
  const Matrix block = toPage * Matrix::translation(pinX, pinY) * Matrix::rotation(cells.number(keys.TxtAngle)) *
                       Matrix::translation(-localX, -localY);
  // From here on in points, y downward from the block's top left corner. Margins and type do not follow the drawing's
  // scale.
  const double blockWidth = width * scale, blockHeight = height * scale;
  Matrix toScene = block * Matrix{1 / scale, 0, 0, -1 / scale, 0, height};
  if (toScene.determinant() < 0) {
    // A flipped shape keeps its text readable.
    toScene = toScene * Matrix{-1, 0, 0, 1, blockWidth, 0};
  }
  const double left = cells.number(keys.LeftMargin) * 72, right = cells.number(keys.RightMargin) * 72;
  const double top = cells.number(keys.TopMargin) * 72, bottom = cells.number(keys.BottomMargin) * 72;
  // Lines of vertical text run downward, the first one at the right.
  const bool vertical = cells.integer(keys.TextDirection) == 1;
  const double room = std::max(1.0, vertical ? blockHeight - top - bottom : blockWidth - left - right);
  TextItem item;
  item.layout = text_.layOut(text, room);
  const int align = cells.integer(keys.VerticalAlign, 1);
  const double spare = (vertical ? blockWidth - left - right : blockHeight - top - bottom) - item.layout->height;
  const double before = align == 0 ? 0 : align == 2 ? spare : spare / 2;
  if (vertical)
    item.transform = toScene * Matrix{0, 1, -1, 0, blockWidth - right - before, top};
  else
    item.transform = toScene * Matrix::translation(left, top + before);

  // The cell holds a colour's number plus 1, or a colour; 0 and 255 are none.
  const host::Value background = cells.value(keys.TextBkgnd);
  Maybe<std::uint32_t> rgb;
  if (background.kind() == host::ValueKind::Number) {
    const double number = background.internal();
    if (number >= 1 && number < 255) rgb = colourOf(page_.document, host::Value::number(number - 1));
  } else {
    rgb = colourOf(page_.document, background);
  }
  if (rgb) item.background = {*rgb, 1 - std::clamp(cells.number(keys.TextBkgndTrans), 0.0, 1.0)};
  std::vector<TextItem> upright;
  if (vertical) upright = uprightLetters(item);
  put(std::move(item));
  for (TextItem& letter : upright) put(std::move(letter));
}

void ShapeBuilder::setLink(const ShapeCells& cells, ShapeBegin& begin) const {
  const ColumnKeys& columns = columnKeys();
  const std::string& base = page_.store.document(page_.store.sheet(cells.sheet())->document)->properties.hyperlinkBase;
  bool haveDefault = false;
  for (const host::RowView& row : host::rowsOf(page_.store, cells.sheet(), host::SectionNumber::Hyperlink)) {
    const auto at = [&](host::Column column) { return host::CellKey{host::SectionNumber::Hyperlink, row.key, column}; };
    if (cells.flag(at(columns.HyperlinkInvisible))) continue;
    const bool isDefault = cells.flag(at(columns.HyperlinkDefault));
    if (!begin.link.empty() && (haveDefault || !isDefault)) continue;
    const std::string address = cells.text(at(columns.HyperlinkAddress));
    const std::string place = cells.text(at(columns.HyperlinkSubAddress));
    const bool isInDrawing = readLinkAddress(address).kind == AddressKind::None;
    std::string link = isInDrawing && !place.empty() ? "#" + place : uriOfLink(address, place, base);
    if (link.empty()) continue;
    begin.link = std::move(link);
    begin.linkTitle = cells.text(at(columns.HyperlinkDescription));
    haveDefault = isDefault;
  }
}

}  // namespace quorvel::render
