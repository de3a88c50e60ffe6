// Windows without a screen: each open document has at least one, with its page, its zoom and its selection.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/sheet/ids.h"

namespace quorvel::host {

using WindowId = StrongId<struct WindowTag>;

enum class WindowFit { None, Page, Width };

/// 0.05 to 9.99 are factors; -1 fits the whole page into the window, -2 its width.
inline bool isZoom(double zoom) { return (zoom >= 0.05 && zoom <= 9.99) || zoom == -1 || zoom == -2; }

struct WindowState {
  WindowId id;
  DocumentId document;
  PageId page;
  int type = 1, subType = 128;  ///< a drawing window that shows a page

  WindowFit fit = WindowFit::Page;
  double factor = 1;  ///< of the page's size, while nothing is fitted

  double zoom() const { return fit == WindowFit::None ? factor : fit == WindowFit::Page ? -1 : -2; }
  void setZoom(double zoom) {
    fit = zoom > 0 ? WindowFit::None : zoom == -1 ? WindowFit::Page : WindowFit::Width;
    if (zoom > 0) factor = zoom;
  }

  const std::vector<SheetId>& selection() const { return *selected; }
  void select(std::vector<SheetId> shapes) {
    selected = std::make_shared<const std::vector<SheetId>>(std::move(shapes));
  }

  /// In order of selecting. Shared with the selections that were handed out, so that each may be a new object.
  std::shared_ptr<const std::vector<SheetId>> selected = std::make_shared<const std::vector<SheetId>>();
};

}  // namespace quorvel::host
