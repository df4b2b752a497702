// What tests need of the system they run on.
#pragma once

#include <dlfcn.h>

#include <filesystem>

namespace nivaro::test {

// Names that differ in letter case only are names of several files.
inline constexpr bool kLetterCaseCounts = true;

// A file that takes no byte, as on a full disk, where the system has one.
inline constexpr const char* kFullDisk = "/dev/full";
inline bool hasFullDisk() {
  return std::filesystem::exists(kFullDisk);
}

// A shared library that every machine of this system has.
inline constexpr const char* kSomeLibrary = "libm.so.6";

// The program was built with the address sanitizer, which ends it where memory runs out.
inline bool isAddressSanitized() {
  return dlsym(RTLD_DEFAULT, "__asan_init") != nullptr;
}

}  // namespace nivaro::test
