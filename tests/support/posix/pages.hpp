// Pages of memory that may be used or not.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <new>

namespace nivaro::test {

inline std::size_t pageSize() {
  return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// Pages that nobody may touch.
inline unsigned char* reservePages(std::size_t size) {
  void* const map = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (map == MAP_FAILED) throw std::bad_alloc();
  return static_cast<unsigned char*>(map);
}

inline void allowUse(unsigned char* first, std::size_t size) {
  mprotect(first, size, PROT_READ | PROT_WRITE);
}

inline void allowReading(unsigned char* first, std::size_t size) {
  mprotect(first, size, PROT_READ);
}

inline void releasePages(unsigned char* first, std::size_t size) {
  munmap(first, size);
}

}  // namespace nivaro::test
