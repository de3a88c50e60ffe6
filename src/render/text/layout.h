// Lays out a shape's text with real fonts.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>

#include "render/scene/scene.h"
#include "render/text/styled_text.h"

namespace quorvel::render {

/// Lays out and remembers what it laid out, so that ten thousand equal labels cost one. Not for use by two threads at
/// once.
class TextEngine {
 public:
  TextEngine();
  ~TextEngine();
  TextEngine(const TextEngine&) = delete;
  TextEngine& operator=(const TextEngine&) = delete;

  /// Lines as wide as `width` points at most; negative: broken only at line ends, and as wide as the widest line.
  std::shared_ptr<const TextLayout> layOut(const StyledText& text, double width);
  /// How many texts were really laid out.
  std::size_t layoutCount() const { return layoutCount_; }

 private:
  struct Pango;
  std::unique_ptr<Pango> pango_;
  std::unordered_map<std::string, std::shared_ptr<const TextLayout>> known_;
  std::size_t layoutCount_ = 0;
};

}  // namespace quorvel::render
