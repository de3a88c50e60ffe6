// Fuzzes the reader of packages: the input is the file.
#include "fuzz/drawing_target.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quorvel;
  host::Store store;
  const host::DocumentId document = store.addDocument("drawing");
  if (fuzz::readPackage(store, document, std::string(reinterpret_cast<const char*>(data), size)))
    fuzz::checkDrawing(store, document, size);
  return 0;
}
