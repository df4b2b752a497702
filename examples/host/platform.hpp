// What differs between systems: loading a shared library, the terminal, the program's own folder.
#pragma once

#include <filesystem>
#include <string>

namespace host {

// What a shared library of this system is called: "libname.so", "name.dll".
std::string sharedLibraryName(const std::string& name);

// The handle, or null with the loader's reason. A library stays loaded until the process ends.
void* openSharedLibrary(const std::filesystem::path& file, std::string& reason);
void* findSymbol(void* library, const char* name);

std::filesystem::path programFolder();
bool outputIsTerminal();

// A reader of the output that leaves (`| head`) does not end the run.
void outliveReaderOfOutput();

}  // namespace host
