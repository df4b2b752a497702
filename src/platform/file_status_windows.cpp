#include <windows.h>

#include "platform/file_status.hpp"
#include "platform/system_path.hpp"

namespace nivaro {

std::optional<SaveDate> saveDate(std::string_view path) {
  WIN32_FILE_ATTRIBUTE_DATA file;
  if (GetFileAttributesExW(systemPath(path).c_str(), GetFileExInfoStandard, &file) == 0)
    return std::nullopt;
  const ULARGE_INTEGER date{
      {file.ftLastWriteTime.dwLowDateTime, file.ftLastWriteTime.dwHighDateTime}};
  constexpr ULONGLONG kTicksInSecond = 10000000;
  return static_cast<SaveDate>(date.QuadPart / kTicksInSecond);
}

}  // namespace nivaro
