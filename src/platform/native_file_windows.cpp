#include <windows.h>

#include <algorithm>

#include "platform/native_file.hpp"
#include "platform/system_path.hpp"

namespace nivaro {
namespace {

using Action = OpenOptions::Action;
using Sharing = OpenOptions::Sharing;
using Status = OpenOptions::Status;

constexpr std::size_t kLargestTransfer = 1 << 30;

// In the language of the module's other texts, and of other systems where these say the same.
struct Reason {
  DWORD error;
  const char* text;
};
constexpr Reason kReasons[] = {
    {ERROR_FILE_NOT_FOUND, "No such file or directory"},
    {ERROR_PATH_NOT_FOUND, "No such file or directory"},
    {ERROR_INVALID_NAME, "No valid file name"},
    {ERROR_BAD_PATHNAME, "No valid file name"},
    {ERROR_BAD_NETPATH, "No such network name"},
    {ERROR_BAD_NET_NAME, "No such network name"},
    {ERROR_ACCESS_DENIED, "Permission denied"},
    {ERROR_SHARING_VIOLATION, "Another program has the file open"},
    {ERROR_LOCK_VIOLATION, "Another program has locked a part of the file"},
    {ERROR_WRITE_PROTECT, "Read-only file system"},
    {ERROR_DISK_FULL, "No space left on device"},
    {ERROR_HANDLE_DISK_FULL, "No space left on device"},
};

std::string reason(DWORD error) {
  const auto* row = std::find_if(std::begin(kReasons), std::end(kReasons),
                                 [&](const Reason& known) { return known.error == error; });
  return row == std::end(kReasons) ? "System error " + std::to_string(error) : row->text;
}

DWORD accessOf(Action action) {
  if (action == Action::Read) return GENERIC_READ;
  return action == Action::Write ? GENERIC_WRITE : GENERIC_READ | GENERIC_WRITE;
}

DWORD dispositionOf(Status status) {
  if (status == Status::Old) return OPEN_EXISTING;
  return status == Status::Replace ? CREATE_ALWAYS : OPEN_ALWAYS;
}

DWORD sharingOf(Sharing sharing) {
  constexpr DWORD everything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return sharing == Sharing::Free ? everything : FILE_SHARE_READ;
}

bool isFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::optional<FileIdentity> identityOf(HANDLE file) {
  BY_HANDLE_FILE_INFORMATION information;
  if (GetFileInformationByHandle(file, &information) == 0) return std::nullopt;
  const ULARGE_INTEGER number{{information.nFileIndexLow, information.nFileIndexHigh}};
  return FileIdentity{information.dwVolumeSerialNumber, number.QuadPart};
}

HANDLE asHandle(std::intptr_t descriptor) {
  return reinterpret_cast<HANDLE>(descriptor);
}

std::optional<std::uint64_t> movedTo(HANDLE file, std::int64_t offset, DWORD from) {
  LARGE_INTEGER distance;
  LARGE_INTEGER place;
  distance.QuadPart = offset;
  if (SetFilePointerEx(file, distance, &place, from) == 0) return std::nullopt;
  return static_cast<std::uint64_t>(place.QuadPart);
}

}  // namespace

// Asks for no access at all, which no sharing mode of another handle refuses.
std::optional<FileIdentity> fileIdentity(const std::string& path) {
  const HANDLE file = CreateFileW(systemPath(path).c_str(), 0, sharingOf(Sharing::Free), nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return std::nullopt;
  const std::optional<FileIdentity> identity = identityOf(file);
  CloseHandle(file);
  return identity;
}

NativeFile::~NativeFile() {
  close();
}

std::string NativeFile::open(const std::string& path, const OpenOptions& options) {
  if (std::string problem = close(); !problem.empty()) return problem;

  const std::wstring name = systemPath(path);
  const HANDLE file =
      CreateFileW(name.c_str(), accessOf(options.action), sharingOf(options.sharing), nullptr,
                  dispositionOf(options.status), FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file != INVALID_HANDLE_VALUE) {
    descriptor_ = reinterpret_cast<std::intptr_t>(file);
    identity_ = identityOf(file);
    return {};
  }
  const DWORD error = GetLastError();
  return isFolder(name) ? "Is a directory" : reason(error);
}

std::string NativeFile::close() {
  if (!isOpen()) return {};
  const bool isClosed = CloseHandle(asHandle(descriptor_)) != 0;
  const DWORD error = GetLastError();
  descriptor_ = kNone;
  identity_.reset();
  return isClosed ? std::string() : reason(error);
}

std::optional<std::size_t> NativeFile::read(std::span<char> bytes) {
  const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLargestTransfer));
  DWORD count = 0;
  if (ReadFile(asHandle(descriptor_), bytes.data(), wanted, &count, nullptr) != 0) return count;
  const DWORD error = GetLastError();
  if (error == ERROR_HANDLE_EOF || error == ERROR_BROKEN_PIPE) return 0;
  return std::nullopt;
}

std::string NativeFile::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kLargestTransfer));
    DWORD count = 0;
    if (WriteFile(asHandle(descriptor_), bytes.data(), wanted, &count, nullptr) == 0)
      return reason(GetLastError());
    if (count == 0) return reason(ERROR_DISK_FULL);
    bytes.remove_prefix(count);
  }
  return {};
}

bool NativeFile::seek(std::uint64_t offset) {
  return movedTo(asHandle(descriptor_), static_cast<std::int64_t>(offset), FILE_BEGIN).has_value();
}

std::optional<std::uint64_t> NativeFile::seekEnd() {
  return movedTo(asHandle(descriptor_), 0, FILE_END);
}

std::string_view lineEnd() {
  return "\r\n";
}

}  // namespace nivaro
