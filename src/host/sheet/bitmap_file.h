// Bitmaps as drawings and metafiles hold them: without the header that a bitmap file begins with and viewers need.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::host {

/// The bitmap with a file header; empty when the bytes are no bitmap or have the header already.
std::string bitmapFile(std::string_view bytes);
/// The bytes behind the header; all of them when there is none.
std::string_view withoutBitmapHeader(std::string_view file);

struct BitmapSize {
  int width = 0, height = 0;  ///< pixels; 0 when the bytes are no bitmap
};
BitmapSize bitmapSize(std::string_view bytes);

}  // namespace quorvel::host
