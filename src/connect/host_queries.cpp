#include "connect/host_queries.h"

#include <ranges>

#include "base/text.h"
#include "schema/cells.h"
#include "schema/masters.h"

namespace quorvel::addin {

std::string getVisioVersion(const dsrVisioConnect& connect) {
  const std::string version = connect.gvsoApp.Version().or_({});
  if (version.starts_with("10")) return "2002";
  if (version.starts_with("11")) return "2003";
  if (version.starts_with("12")) return "2007";
  return {};
}

bool hasQuorvelTemplate(const Document& document) {
  return containsIgnoringCase(document.Template().or_({}), schema::productName);
}

bool isInitialized(const Document& document) {
  return document.DocumentSheet().CellExists(schema::documentCells::isInitialized, 1) == true;
}

bool isMap(const Document& document) { return hasQuorvelTemplate(document) && isInitialized(document); }

bool isForeground(const Page& page) { return page.Background() == false; }

bool isOnMapPage(const Shape& shape) {
  const Page page = shape.ContainingPage();
  return isForeground(page) && isMap(page.Document());
}

Shape selectedShapeOfMaster(std::span<const Shape> selected, std::string_view masterName) {
  for (const Shape& shape : selected | std::views::reverse) {
    if (shape.Master().Name() == masterName) return shape;
  }
  return {};
}

Window windowOf(const dsrVisioConnect& connect, const Document& document) {
  if (!document) return {};
  const Window active = connect.gvsoApp.ActiveWindow();
  if (active.Document() == document) return active;
  for (const Window& window : connect.gvsoApp.Windows().all()) {
    if (window.Document() == document) return window;
  }
  return {};
}

void showPage(const dsrVisioConnect& connect, const Page& page) {
  const Window window = windowOf(connect, page.Document());
  if (!window) return;
  window.Activate();
  if (!(window.Page() == page)) window.SetPage(page);
}

void deselectOn(const dsrVisioConnect& connect, const Page& page) {
  // What is selected while shapes are added is what the user just pasted.
  if (!page || connect.shapesBeingAdded > 0) return;
  const Window active = connect.gvsoApp.ActiveWindow();
  if (active.Page() == page) {
    active.DeselectAll();
    return;
  }
  const Window window = windowOf(connect, page.Document());
  if (window.Page() == page) window.DeselectAll();
}

}  // namespace quorvel::addin
