#include <windows.h>

#include "platform/host_path.hpp"
#include "platform/system_path.hpp"

namespace nivaro {
namespace {

enum class Kind { Nothing, File, Folder };

Kind kindOf(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return Kind::Nothing;
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Kind::Folder : Kind::File;
}

// The folder without the separators behind it.
std::string_view bare(std::string_view folder) {
  return folder.substr(0, folder.find_last_not_of("/\\ ") + 1);
}

bool createWithFoldersAbove(const std::wstring& folder) {
  if (kindOf(folder) == Kind::Folder) return true;
  const std::size_t nameEnd = folder.find_last_not_of(L"/\\");
  const std::size_t separator =
      nameEnd == std::wstring::npos ? nameEnd : folder.find_last_of(L"/\\", nameEnd);
  if (separator == std::wstring::npos) return false;
  return createWithFoldersAbove(folder.substr(0, separator)) &&
         CreateDirectoryW(folder.c_str(), nullptr) != 0;
}

}  // namespace

// This system itself takes both separators, drive letters and network names, and ignores letter
// case.
HostPath hostPath(std::string_view path) {
  return {std::string(path), kindOf(systemPath(path)) == Kind::File, {}};
}

std::string absolutePath(std::string_view path) {
  return textOf(absoluteSystemPath(systemPath(path)));
}

bool folderExists(std::string_view folder) {
  return bare(folder).empty() || kindOf(systemPath(folder)) == Kind::Folder;
}

bool createFolder(std::string_view folder) {
  return folderExists(folder) ||
         createWithFoldersAbove(absoluteSystemPath(systemPath(bare(folder))));
}

}  // namespace nivaro
