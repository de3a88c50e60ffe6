// Fuzzes the reader of single-file drawings: the input is the file.
#include "fuzz/drawing_target.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quorvel;
  std::string bytes(reinterpret_cast<const char*>(data), size);
  host::Store store;
  const host::DocumentId document = store.addDocument("drawing");
  if (formats::vdx::readDocument(store, document, bytes).empty()) fuzz::checkDrawing(store, document, size);
  return 0;
}
