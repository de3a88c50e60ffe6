#include "cli/process_memory.h"

#include <cstdint>
#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace quorvel::cli {

#ifdef __GLIBC__

namespace {

constexpr int mebibyte = 1 << 20;
/// Address space, not memory: pages that are not written use none.
constexpr int step = 256 * mebibyte;
constexpr std::uintptr_t largePage = 2 * mebibyte;

/// A drawing of thousands of shapes writes tens of thousands of pages for the first time, and the kernel maps each. In
/// large pages that is a few dozen.
void useLargePages(std::uintptr_t begin, std::uintptr_t end) {
  begin = (begin + largePage - 1) / largePage * largePage;
  if (begin < end) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

}  // namespace

void prepareProcessMemory() {
  ::mallopt(M_TRIM_THRESHOLD, 1024 * mebibyte);
  ::mallopt(M_MMAP_THRESHOLD, 32 * mebibyte);
  ::mallopt(M_TOP_PAD, step);
  const auto before = reinterpret_cast<std::uintptr_t>(::sbrk(0));
  void* volatile first =
      std::malloc(mebibyte);  // grows the heap in larger steps; volatile, or the compiler removes the pair
  std::free(first);
  useLargePages(before, reinterpret_cast<std::uintptr_t>(::sbrk(0)));
}

#else

void prepareProcessMemory() {}

#endif

}  // namespace quorvel::cli
