// Fuzzes the reader of bookmark names: the input is a word-processor document.
#include "formats/word/bookmarks.h"
#include "fuzz/check.h"
#include "fuzz/memory_file.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  using namespace quorvel;
  const fuzz::MemoryFile file(std::string_view(reinterpret_cast<const char*>(data), size));
  const auto names = formats::bookmarksOfDocument(file.name());
  if (!names) return 0;
  std::size_t bytes = 0;
  for (const std::string& name : *names) {
    fuzz::check(!name.empty() && name[0] != '_', "hidden bookmarks are left out");
    bytes += name.size();
  }
  // A UTF-16 unit of two bytes becomes at most three. A cyclic chain may give the same bytes again and again, but no
  // more than the stream's size, which is at most that of the file.
  fuzz::check(bytes <= size * 3 / 2, "names are no longer than the file");
  return 0;
}
