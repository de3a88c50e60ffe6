#include "addin/host_queries.h"

#include <ranges>

#include "base/text.h"

namespace quorvel::addin {

std::string getVisioVersion(const dsrVisioConnect& connect) {
  const std::string version = connect.gvsoApp.Version().or_({});
  if (version.starts_with("10")) return "2002";
  if (version.starts_with("11")) return "2003";
  if (version.starts_with("12")) return "2007";
  return {};
}

bool hasQuorvelTemplate(const Document& document) {
  return containsIgnoringCase(document.Template().or_({}), "Quorvel");
}

bool isQuorvelDocument(const dsrVisioConnect& connect) { return hasQuorvelTemplate(connect.gvsoApp.ActiveDocument()); }

bool isInitialized(const dsrVisioConnect& connect) {
  return connect.gvsoApp.ActiveDocument().DocumentSheet().CellExists("User.Based_On_ZNB", 1) == true;
}

bool inPageWindow(const dsrVisioConnect& connect) {
  const Window window = connect.gvsoApp.ActiveWindow();
  return window.Type() == visio::windowDrawing && window.SubType() == visio::windowPage;
}

bool onForegroundPage(const dsrVisioConnect& connect) { return connect.gvsoApp.ActivePage().Background() == false; }

Shape selectedShapeOfMaster(const dsrVisioConnect& connect, std::string_view masterName) {
  const std::vector<Shape> selected = connect.gvsoApp.ActiveWindow().Selection().all();
  for (const Shape& shape : selected | std::views::reverse) {
    if (shape.Master().Name() == masterName) return shape;
  }
  return {};
}

}  // namespace quorvel::addin
