#include "commands/display_scope.h"

#include <algorithm>
#include <iterator>

#include "sheets/shape_classes.h"

namespace quorvel::addin {
DisplayTarget shownNow(const dsrVisioConnect& connect) {
  const Window window = connect.gvsoApp.ActiveWindow();
  const Selection selection = window.Selection();
  DisplayTarget target{window.Page(), selection.all(), {}};
  selection.SetIterationMode(visio::selectModeSkipSuper);
  target.selectedWithMembers = selection.all();
  return target;
}

std::vector<Page> pagesInScope(const DisplayTarget& target, std::string_view scope) {
  if (scope == displayScope::page) return {target.page};
  if (scope != displayScope::drawing) return {};
  std::vector<Page> pages = target.page.Document().Pages().all();
  pages.erase(std::ranges::find_if(pages, [](const Page& page) { return page.Background() == true; }), pages.end());
  return pages;
}

std::vector<Shape> shapesInScope(const DisplayTarget& target, std::string_view scope, ShapeTest fits) {
  std::vector<Shape> shapes;
  if (scope == displayScope::selected) shapes = target.selectedWithMembers;
  for (const Page& page : pagesInScope(target, scope))
    std::ranges::copy(page.Shapes().all(), std::back_inserter(shapes));
  std::erase_if(shapes, [&](const Shape& shape) { return !fits(shape); });
  return shapes;
}

int commonSwitch(const DisplayTarget& target, std::string_view cell, ShapeTest fits) {
  constexpr int differs = 2;
  const auto valueOn = [&](const Shape& sheet) { return sheet.Cells(cell).ResultInt(visio::unitsNone, 0).or_(0); };
  Maybe<int> common;
  for (const Shape& shape : target.selectedWithMembers) {
    if (!fits(shape)) continue;
    const int value = valueOn(shape);
    if (common != value && common) return differs;
    common = value;
  }
  return common ? *common : valueOn(target.page.PageSheet());
}

void writeSwitch(const Shape& sheet, std::string_view cell, int box) {
  sheet.Cells(cell).ResultForce(visio::unitsNone, box == 0 ? 0 : 1);
}

}  // namespace quorvel::addin
