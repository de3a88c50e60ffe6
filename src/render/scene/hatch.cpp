#include "render/scene/hatch.h"

namespace quorvel::render {
namespace {

void addLine(Path& path, Point from, Point to) {
  path.moveTo(from);
  path.lineTo(to);
}

/// Slanted lines continue across the tile's corners.
void addSlanted(Path& path, double size, bool rising) {
  for (double shift : {-size, 0.0, size})
    addLine(path, {shift - 1, rising ? size + 1 : -1}, {shift + size + 1, rising ? -1 : size + 1});
}

void addDot(Path& path, double x, double y, double side) { path.addRectangle(x, y, x + side, y + side); }

/// Dots in a grid of `count` by `count`, every second row moved by half a step.
void addDots(PatternTile& tile, int count, double side) {
  const double step = tile.size / count;
  for (int row = 0; row < count; ++row)
    for (int column = 0; column < count; ++column)
      addDot(tile.areas, column * step + (row % 2 ? step / 2 : 0), row * step, side);
}

}  // namespace

PatternTile patternTile(int number) {
  PatternTile tile;
  const double s = tile.size;
  const auto horizontal = [&] { addLine(tile.lines, {-1, s / 2}, {s + 1, s / 2}); };
  const auto vertical = [&] { addLine(tile.lines, {s / 2, -1}, {s / 2, s + 1}); };
  switch (number) {
    case 2:
      addSlanted(tile.lines, s, true);
      break;
    case 3:
      horizontal(), vertical();
      break;
    case 4:
      addSlanted(tile.lines, s, true), addSlanted(tile.lines, s, false);
      break;
    case 5:
      addSlanted(tile.lines, s, false);
      break;
    case 6:
      horizontal();
      break;
    case 7:
      vertical();
      break;
    case 8:
      addDots(tile, 4, 1.6);
      break;
    case 9:
      addDots(tile, 4, 1.3);
      break;
    case 10:
      addDots(tile, 4, 1);
      break;
    case 11:
      addDots(tile, 2, 1.3);
      break;
    case 12:
      addDots(tile, 2, 0.9);
      break;
    case 13:
      horizontal(), addLine(tile.lines, {-1, 0}, {s + 1, 0});
      break;
    case 14:
      vertical(), addLine(tile.lines, {0, -1}, {0, s + 1});
      break;
    case 15:
      tile.size = 5, addSlanted(tile.lines, 5, false);
      break;
    case 16:
      tile.size = 5, addSlanted(tile.lines, 5, true);
      break;
    case 17:
      tile.lineWidth = 1, tile.size = 5, addSlanted(tile.lines, 5, true), addSlanted(tile.lines, 5, false);
      break;
    case 18:
      addDots(tile, 4, 1.8);
      break;
    case 19:
      tile.lineWidth = 1.5, horizontal();
      break;
    case 20:
      tile.lineWidth = 1.5, vertical();
      break;
    case 21:
      tile.lineWidth = 1.5, addSlanted(tile.lines, s, false);
      break;
    case 22:
      tile.lineWidth = 1.5, addSlanted(tile.lines, s, true);
      break;
    case 23:
      tile.lineWidth = 1, horizontal(), vertical();
      break;
    case 24:
      tile.size = 4, addLine(tile.lines, {-1, 2}, {5, 2}), addLine(tile.lines, {2, -1}, {2, 5});
      break;
    default:
      break;
  }
  return tile;
}

}  // namespace quorvel::render
