#include "shapes/task_count.h"

#include <algorithm>

#include "shapes/shape_classes.h"

namespace quorvel::addin {

int TaskCount(const dsrVisioConnect& connect, std::string_view scope) {
  std::vector<Shape> shapes;
  if (scope == "Selected") shapes = connect.gvsoApp.ActiveWindow().Selection().all();
  if (scope == "Page") shapes = connect.gvsoApp.ActivePage().Shapes().all();
  // The page's collection holds top-level shapes only, but a selection may list members in their own right.
  return static_cast<int>(
      std::ranges::count_if(shapes, [](const Shape& shape) { return IsTask(shape) && isTopLevel(shape); }));
}

}  // namespace quorvel::addin
