#include "render/text/text_metrics.h"

#include <mutex>

#include "host/cells/cell_table.h"
#include "host/sheet/inheritance.h"
#include "render/text/layout.h"

namespace quorvel::render {

namespace {

constexpr double lineSpacing = 1.2;          ///< line height for one unit of character size
constexpr double defaultSize = 12.0 / 72.0;  ///< inches

}  // namespace

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
  StyledText text = styledTextOf(context, ShapeCells(store, shape));
  if (text.paragraphs.empty()) {
    // An empty text is still one line high; boxes that grow with their text count on it.
    static const host::CellKey size{host::SectionNumber::Character, host::RowKey::index(0),
                                    host::columnOf(host::SectionNumber::Character, "Size").or_(0)};
    const double inches = host::cellNumber(store, shape, size);
    return {0, lineSpacing * (inches > 0 ? inches : defaultSize)};
  }
  // Files of other programs show that a width without a limit takes in the blank that a paragraph's end counts as.
  constexpr const char* unbreakableBlank = "\u00a0";
  if (maxWidth < 0) {
    for (Paragraph& paragraph : text.paragraphs) paragraph.spans.back().text += unbreakableBlank;
  }
  const std::lock_guard lock(state_->mutex);
  const std::shared_ptr<const TextLayout> layout = state_->engine.layOut(text, maxWidth < 0 ? -1 : maxWidth * 72);
  return {layout->width / 72, layout->height / 72};
}

}  // namespace quorvel::render
