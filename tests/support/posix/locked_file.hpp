// A file that nobody can open.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace nivaro::test {

// Locked until it is released: a socket is there, is no folder, and is opened by nobody.
class LockedFile {
 public:
  explicit LockedFile(const std::string& path) : path_(path) {
    mknod(path.c_str(), S_IFSOCK | S_IRUSR | S_IWUSR, 0);
  }
  void release() { std::filesystem::remove(path_); }

  static constexpr const char* kReason = "No such device or address";

 private:
  std::string path_;
};

}  // namespace nivaro::test
