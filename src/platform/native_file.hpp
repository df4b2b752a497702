// An open file of the operating system, unbuffered: the only place that calls the system for file
// contents. Each system has a source of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/open_options.hpp"

namespace nivaro {

// What tells a file from all others, by whatever name or link it is reached.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t number = 0;
  bool operator==(const FileIdentity&) const = default;
};

// None where there is no such file.
std::optional<FileIdentity> fileIdentity(const std::string& path);

class NativeFile {
 public:
  NativeFile() = default;
  ~NativeFile();
  NativeFile(const NativeFile&) = delete;
  NativeFile& operator=(const NativeFile&) = delete;

  // Empty on success, else the system's reason, as for all that return a text here. What other
  // programs may do with the file meanwhile is up to the options where the system keeps files to
  // those who have them open, else everything. A folder is refused.
  std::string open(const std::string& path, const OpenOptions& options);
  std::string close();
  bool isOpen() const { return descriptor_ != kNone; }

  // None while no file is open.
  const std::optional<FileIdentity>& identity() const { return identity_; }

  // The number of bytes read, 0 at the end of the file; none when the system reports an error.
  std::optional<std::size_t> read(std::span<char> bytes);
  std::string write(std::string_view bytes);

  // Where reading and writing go on; what is no file on a disk may have no such place.
  bool seek(std::uint64_t offset);
  std::optional<std::uint64_t> seekEnd();

 private:
  static constexpr std::intptr_t kNone = -1;
  std::intptr_t descriptor_ = kNone;  // what the system calls the open file: a number or a handle
  std::optional<FileIdentity> identity_;
};

// What ends a line of a text file on this system.
std::string_view lineEnd();

}  // namespace nivaro
