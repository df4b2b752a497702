#include "platform/system_path.hpp"

#include <windows.h>

namespace nivaro {
namespace {

// Folders must stay 12 characters below the limit of 260, for the files in them.
constexpr std::size_t kClassicLength = MAX_PATH - 12;

constexpr std::wstring_view kLongPrefix = L"\\\\?\\";
constexpr std::wstring_view kLongNetworkPrefix = L"\\\\?\\UNC\\";
constexpr std::wstring_view kNetworkPrefix = L"\\\\";

std::wstring wide(std::string_view text, UINT codePage, DWORD flags) {
  const int size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(codePage, flags, text.data(), size, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(codePage, flags, text.data(), size, result.data(), length);
  return result;
}

std::wstring replacedPrefix(std::wstring_view path, std::wstring_view prefix,
                            std::wstring_view by) {
  return std::wstring(by).append(path.substr(prefix.size()));
}

}  // namespace

std::wstring systemPath(std::string_view path) {
  std::wstring name = wide(path, CP_UTF8, MB_ERR_INVALID_CHARS);
  if (name.empty()) name = wide(path, CP_ACP, 0);
  if (name.size() < kClassicLength || name.starts_with(kLongPrefix)) return name;

  const std::wstring absolute = absoluteSystemPath(name);
  if (absolute.starts_with(kNetworkPrefix))
    return replacedPrefix(absolute, kNetworkPrefix, kLongNetworkPrefix);
  return replacedPrefix(absolute, L"", kLongPrefix);
}

std::string textOf(std::wstring_view path) {
  std::wstring name(path);
  if (path.starts_with(kLongNetworkPrefix))
    name = replacedPrefix(path, kLongNetworkPrefix, kNetworkPrefix);
  else if (path.starts_with(kLongPrefix))
    name = replacedPrefix(path, kLongPrefix, L"");

  const int size = static_cast<int>(name.size());
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, name.data(), size, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, name.data(), size, text.data(), length, nullptr, nullptr);
  return text;
}

std::wstring absoluteSystemPath(const std::wstring& path) {
  const DWORD sizeWithEnd = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
  if (sizeWithEnd == 0) return path;
  std::wstring absolute(sizeWithEnd, L'\0');
  absolute.resize(GetFullPathNameW(path.c_str(), sizeWithEnd, absolute.data(), nullptr));
  return absolute;
}

}  // namespace nivaro
