// What tests need of the system they run on.
#pragma once

namespace nivaro::test {

// Names that differ in letter case only are names of several files.
inline constexpr bool kLetterCaseCounts = false;

// A file that takes no byte, as on a full disk, where the system has one.
inline constexpr const char* kFullDisk = "";
inline bool hasFullDisk() {
  return false;
}

// A shared library that every machine of this system has.
inline constexpr const char* kSomeLibrary = "kernel32.dll";

// The program was built with the address sanitizer, which ends it where memory runs out.
inline bool isAddressSanitized() {
  return false;
}

}  // namespace nivaro::test
