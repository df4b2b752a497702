// Files that are open in another program.
#pragma once

#include <windows.h>

#include <string>

namespace nivaro::test {

// A handle of another program on a file, made where it is missing, with what it lets others do.
class ForeignHandle {
 public:
  ForeignHandle(const std::string& path, DWORD access, DWORD sharing)
      : handle_(CreateFileA(path.c_str(), access, sharing, nullptr, OPEN_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~ForeignHandle() { release(); }
  ForeignHandle(const ForeignHandle&) = delete;
  ForeignHandle& operator=(const ForeignHandle&) = delete;

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  bool write(const std::string& text) {
    DWORD count = 0;
    return WriteFile(handle_, text.data(), static_cast<DWORD>(text.size()), &count, nullptr) != 0;
  }
  void release() {
    if (isOpen()) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_;
};

// A file that nobody can open until it is released.
class LockedFile {
 public:
  explicit LockedFile(const std::string& path) : handle_(path, GENERIC_READ, 0) {}
  void release() { handle_.release(); }

  static constexpr const char* kReason = "Another program has the file open";

 private:
  ForeignHandle handle_;
};

}  // namespace nivaro::test
