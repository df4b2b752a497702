#include <dlfcn.h>
#include <unistd.h>

#include <csignal>

#include "platform.hpp"

namespace host {

std::string sharedLibraryName(const std::string& name) {
  return "lib" + name + ".so";
}

void* openSharedLibrary(const std::filesystem::path& file, std::string& reason) {
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (const char* text = library ? nullptr : dlerror()) reason = text;
  return library;
}

void* findSymbol(void* library, const char* name) {
  return dlsym(library, name);
}

std::filesystem::path programFolder() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

bool outputIsTerminal() {
  return isatty(STDOUT_FILENO) == 1;
}

void outliveReaderOfOutput() {
  std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace host
