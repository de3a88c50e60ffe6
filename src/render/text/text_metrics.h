// Measures texts with the fonts that they are drawn with.
#pragma once

#include <memory>

#include "host/text/text.h"

namespace quorvel::render {

/// May be shared by threads; they wait for each other.
class PangoTextMetrics : public host::TextMetrics {
 public:
  PangoTextMetrics();
  ~PangoTextMetrics() override;
  /// A shape without text is one line high.
  Size measure(const host::Store& store, host::SheetId shape, double maxWidth) const override;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quorvel::render
