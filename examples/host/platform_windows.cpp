#include <windows.h>

#include <io.h>
#include <stdio.h>

#include "platform.hpp"

namespace host {

std::string sharedLibraryName(const std::string& name) {
  return name + ".dll";
}

void* openSharedLibrary(const std::filesystem::path& file, std::string& reason) {
  HMODULE library = LoadLibraryW(file.c_str());
  if (!library) reason = "system error " + std::to_string(GetLastError());
  return library;
}

void* findSymbol(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

std::filesystem::path programFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path(path).parent_path();
}

bool outputIsTerminal() {
  return _isatty(_fileno(stdout)) != 0;
}

// Such writes only fail here.
void outliveReaderOfOutput() {}

}  // namespace host
