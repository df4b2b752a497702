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

class NativeFile {
 public:
  NativeFile() = default;
  ~NativeFile();
  NativeFile(const NativeFile&) = delete;
  NativeFile& operator=(const NativeFile&) = delete;

  // Empty on success, else the system's reason, as for all that return a text here. Other programs
  // may read and write the file meanwhile. A folder is refused.
  std::string open(const std::string& path, const OpenOptions& options);
  std::string close();
  bool isOpen() const { return descriptor_ >= 0; }

  // Whether `path` leads to this very file.
  bool isFile(const std::string& path) const;

  // The number of bytes read, 0 at the end of the file; none when the system reports an error.
  std::optional<std::size_t> read(std::span<char> bytes);
  std::string write(std::string_view bytes);

  // Where reading and writing go on; what is no file on a disk may have no such place.
  bool seek(std::uint64_t offset);
  std::optional<std::uint64_t> seekEnd();

 private:
  int descriptor_ = -1;
};

// What ends a line of a text file on this system.
std::string_view lineEnd();

}  // namespace nivaro
