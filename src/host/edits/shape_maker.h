// Making a shape: its cells before the first event.
#pragma once

#include <string_view>

#include "host/engine/engine.h"
#include "host/geometry/row_tags.h"

namespace quorvel::host {

/// A drawn shape at the top of the page's or the group's stack, in the document's default styles. A shape that gets its
/// first member becomes a group. Nothing is in the undo log yet: register it with the graph and Editor::shapeAdded.
SheetId newShape(Engine& engine, PageId page, SheetId parent, SheetKind kind);

/// Cells of a shape in the making: no event was raised and nothing is in the undo log yet.
class ShapeMaker {
 public:
  ShapeMaker(Engine& engine, SheetId shape) : engine_(engine), shape_(shape) {}

  void length(std::string_view name, double inches, std::string_view formula = {});
  void angle(std::string_view name, double radians, std::string_view formula = {});
  void number(std::string_view name, double value);
  /// The block of the text fills the shape. Code that changes one of its cells relies on the others, and so do other
  /// programs that read the drawing.
  void textBlock(double width, double height);
  void geometryFlag(std::string_view name, bool on);
  /// `tag`: the published row tag.
  void vertex(std::uint32_t row, RowTag tag, double x, std::string_view xFormula, double y, std::string_view yFormula);

 private:
  void set(const CellKey& key, Value value, std::string_view formula);
  Engine& engine_;
  SheetId shape_;
};

}  // namespace quorvel::host
