#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/errors_not_signals.hpp"
#include "platform/native_file.hpp"

namespace nivaro {
namespace {

using Action = OpenOptions::Action;
using Status = OpenOptions::Status;

std::string reason(int error) {
  return std::generic_category().message(error);
}

int openFlags(const OpenOptions& options) {
  int flags = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;  // does not wait for the reader of a pipe
  flags |= options.action == Action::Read    ? O_RDONLY
           : options.action == Action::Write ? O_WRONLY
                                             : O_RDWR;
  if (options.status != Status::Old) flags |= O_CREAT;
  if (options.status == Status::Replace) flags |= O_TRUNC;
  return flags;
}

// The signals of a host's timers interrupt slow file systems.
template <typename Call>
auto untilNotInterrupted(Call call) {
  for (;;) {
    const auto result = call();
    if (result >= 0 || errno != EINTR) return result;
  }
}

// A pipe in a folder waits for somebody at its other end, who may never come. Those that a shell hands
// over, under names of the process's open files, have an other end, and lie in no folder.
bool isPipeInFolder(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_fifo(path, error) && !std::filesystem::canonical(path, error).empty();
}

// A host that was started without standard streams leaves their numbers free. A file that got one
// of them would take up what the host means for the screen.
int aboveStandardStreams(int descriptor) {
  if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
  const int moved = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const int error = errno;
  ::close(descriptor);
  errno = error;
  return moved;
}

int number(std::intptr_t descriptor) {
  return static_cast<int>(descriptor);
}

FileIdentity identityOf(const struct stat& status) {
  return {status.st_dev, status.st_ino};
}

}  // namespace

std::optional<FileIdentity> fileIdentity(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return identityOf(status);
}

NativeFile::~NativeFile() {
  close();
}

std::string NativeFile::open(const std::string& path, const OpenOptions& options) {
  if (std::string problem = close(); !problem.empty()) return problem;

  if (options.action != Action::Write && isPipeInFolder(path)) return "It is a pipe, not a file";

  constexpr mode_t everyoneAsTheUserAllows = 0666;
  const int opened = untilNotInterrupted(
      [&] { return ::open(path.c_str(), openFlags(options), everyoneAsTheUserAllows); });
  const int descriptor = aboveStandardStreams(opened);
  if (descriptor < 0) return reason(errno);

  struct stat status;
  const bool isKnown = ::fstat(descriptor, &status) == 0;
  if (isKnown && S_ISDIR(status.st_mode)) {
    ::close(descriptor);
    return reason(EISDIR);
  }
  ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
  descriptor_ = descriptor;
  if (isKnown) identity_ = identityOf(status);
  return {};
}

std::string NativeFile::close() {
  if (!isOpen()) return {};
  const int result = ::close(number(descriptor_));
  descriptor_ = kNone;  // closed even where the system reports that the last data were lost
  identity_.reset();
  return result == 0 ? std::string() : reason(errno);
}

std::optional<std::size_t> NativeFile::read(std::span<char> bytes) {
  const ssize_t count =
      untilNotInterrupted([&] { return ::read(number(descriptor_), bytes.data(), bytes.size()); });
  if (count < 0) return std::nullopt;
  return static_cast<std::size_t>(count);
}

std::string NativeFile::write(std::string_view bytes) {
  const ErrorsNotSignals guard;
  while (!bytes.empty()) {
    const ssize_t count = untilNotInterrupted(
        [&] { return ::write(number(descriptor_), bytes.data(), bytes.size()); });
    if (count < 0) return reason(errno);
    if (count == 0) return reason(EIO);  // a device that takes nothing and does not say why
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return {};
}

bool NativeFile::seek(std::uint64_t offset) {
  return ::lseek(number(descriptor_), static_cast<off_t>(offset), SEEK_SET) >= 0;
}

std::optional<std::uint64_t> NativeFile::seekEnd() {
  const off_t end = ::lseek(number(descriptor_), 0, SEEK_END);
  if (end < 0) return std::nullopt;
  return static_cast<std::uint64_t>(end);
}

std::string_view lineEnd() {
  return "\n";
}

}  // namespace nivaro
