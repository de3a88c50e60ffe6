#include "shapes/task_count.h"

#include <algorithm>

#include "base/ask_again.h"
#include "sheets/shape_classes.h"

namespace quorvel::addin {

int TaskCount(std::span<const Shape> shapes) {
  // The page's collection holds top-level shapes only, but a selection may list members of groups.
  return static_cast<int>(std::ranges::count_if(shapes, isWholeTask));
}

bool isOnlyTaskOnPage(const Page& page) {
  // A Task that is left out would make the page ask for its first number, and use an ID twice.
  const Shapes shapes = askAgain([&] { return page.Shapes(); });
  int found = 0;
  for (int i = askAgain([&] { return shapes.Count(); }).or_(0); i > 0 && found < 2; --i) {
    found += askAgain([&] { return IsTask(shapes.Item(i)); });
  }
  return found == 1;
}

}  // namespace quorvel::addin
