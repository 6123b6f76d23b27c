// Replaces the global allocation functions with counting ones. Kept in a
// file of its own so that no caller sees new and free side by side.
#include "alloc_counter.h"

#include <cstdlib>
#include <new>
#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {
std::size_t allocated = 0;
}  // namespace

std::size_t ts4bench::AllocatedBytes() {
  return allocated;
}

std::size_t ts4bench::InUseBytes() {
#if defined(__GLIBC__)
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
#else
  return 0;
#endif
}

void* operator new(std::size_t size) {
  allocated += size;
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept {
  std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
  std::free(p);
}
