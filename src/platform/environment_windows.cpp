#include "platform/environment.hpp"

#include <windows.h>

#include "platform/system_path.hpp"

namespace nivaro {

// Of the process, not of the C library: each of those has a copy of its own, and a host with another
// one sets its variables there and in the process.
std::string environmentVariable(const char* name) {
  constexpr std::size_t kLongest = 32767;
  std::wstring value(kLongest, L'\0');
  const std::wstring wideName = std::wstring(name, name + std::char_traits<char>::length(name));
  const DWORD length =
      GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(kLongest));
  value.resize(length < kLongest ? length : 0);
  return textOf(value);
}

}  // namespace nivaro
