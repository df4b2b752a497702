// Pages of memory that may be used or not.
#pragma once

#include <windows.h>

#include <cstddef>
#include <new>

namespace nivaro::test {

inline std::size_t pageSize() {
  SYSTEM_INFO system;
  GetSystemInfo(&system);
  return system.dwPageSize;
}

// Pages that nobody may touch.
inline unsigned char* reservePages(std::size_t size) {
  void* const pages = VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS);
  if (pages == nullptr) throw std::bad_alloc();
  return static_cast<unsigned char*>(pages);
}

inline void allowUse(unsigned char* first, std::size_t size) {
  if (size > 0 && VirtualAlloc(first, size, MEM_COMMIT, PAGE_READWRITE) == nullptr)
    throw std::bad_alloc();
}

inline void allowReading(unsigned char* first, std::size_t size) {
  DWORD before = 0;
  if (size > 0) VirtualProtect(first, size, PAGE_READONLY, &before);
}

inline void releasePages(unsigned char* first, std::size_t) {
  VirtualFree(first, 0, MEM_RELEASE);
}

}  // namespace nivaro::test
