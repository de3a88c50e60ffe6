// Fuzzes the reader of a package's XML: the input is the text of its parts.
#include "fuzz/drawing_target.h"
#include "fuzz/part_text.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quorvel;
  const auto parts = fuzz::partsOf({reinterpret_cast<const char*>(data), size});
  host::Store store;
  const host::DocumentId document = store.addDocument("drawing");
  if (fuzz::readPackage(store, document, formats::testing::zipOf(parts, false)))
    fuzz::checkDrawing(store, document, size);
  return 0;
}
