#include "document/hover_upkeep.h"

#include <cmath>

#include "sheets/shape_classes.h"

namespace quorvel::addin {
namespace {

/// A shape's box in the coordinates of its page or group, in inches.
struct Box {
  double centreX, centreY, width, height;

  double left() const { return centreX - width / 2; }
  double bottom() const { return centreY - height / 2; }
  bool contains(double x, double y) const {
    return std::abs(x - centreX) <= width / 2 && std::abs(y - centreY) <= height / 2;
  }
};

Maybe<Box> boxOf(const Shape& shape) {
  const auto x = shape.Cells("PinX").ResultIU(), y = shape.Cells("PinY").ResultIU();
  const auto width = shape.Cells("Width").ResultIU(), height = shape.Cells("Height").ResultIU();
  if (!x || !y || !width || !height) return {};
  return Box{*x, *y, *width, *height};
}

bool isIndicator(const Shape& member) {
  const std::string mark = member.Data1().or_({});
  if (mark == marks::detail) return member.Data3().or_({}).starts_with(marks::hyperlinkIcon);
  return mark == marks::notes || mark == marks::taskHyperlink || mark == marks::subTaskHyperlink;
}

/// Whether the point is inside one of the shape's indicators; nothing for a shape without one.
Maybe<bool> isOverIndicator(const Shape& shape, double x, double y) {
  Maybe<bool> isOver;
  for (const Shape& member : shape.Shapes().all()) {
    if (!isIndicator(member)) continue;
    const auto box = boxOf(shape), inside = boxOf(member);
    isOver = isOver == true || (box && inside && inside->contains(x - box->left(), y - box->bottom()));
  }
  return isOver;
}

}  // namespace

void gvsoApp_MouseMove(const dsrVisioConnect& connect, double x, double y) {
  for (const Shape& shape : connect.gvsoApp.ActivePage().Shapes().all()) {
    // Most shapes have no links, and this runs for every move of the pointer.
    const int links = shape.Hyperlinks().Count().or_(0);
    if (links == 0) continue;
    const Maybe<bool> hide = isOverIndicator(shape, x, y);
    if (!hide) continue;
    for (int row = 0; row < links; ++row) {
      const Cell invisible = shape.CellsSRC(visio::sectionHyperlink, row, visio::columnHyperlinkInvisible);
      const auto now = invisible.Result(visio::unitsNone);
      if (now && (*now != 0) != *hide) invisible.FormulaForce(*hide ? "True" : "False");
    }
  }
}

}  // namespace quorvel::addin
