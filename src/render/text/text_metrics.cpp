#include "render/text/text_metrics.h"

#include <mutex>

#include "render/text/layout.h"

namespace quorvel::render {

struct PangoTextMetrics::State {
  std::mutex mutex;
  TextEngine engine;
};

PangoTextMetrics::PangoTextMetrics() : state_(std::make_unique<State>()) {}
PangoTextMetrics::~PangoTextMetrics() = default;

host::TextMetrics::Size PangoTextMetrics::measure(const host::Store& store, host::SheetId shape,
                                                  double maxWidth) const {
  const host::Sheet* sheet = store.sheet(shape);
  const host::Page* page = sheet ? store.page(sheet->page) : nullptr;
  if (!page) return {};
  const PageContext context(store, *page, {});
  const StyledText text = styledTextOf(context, ShapeCells(store, shape));
  if (text.paragraphs.empty()) return {};
  const std::lock_guard lock(state_->mutex);
  const std::shared_ptr<const TextLayout> layout = state_->engine.layOut(text, maxWidth < 0 ? -1 : maxWidth * 72);
  return {layout->width / 72, layout->height / 72};
}

}  // namespace quorvel::render
