// Names of files and folders as the wide-character calls of Windows take them.
#pragma once

#include <string>
#include <string_view>

namespace nivaro {

// A name in UTF-8; one that is no valid UTF-8 is taken in the system's ANSI code page. Names beyond
// the classic limit of 260 characters are made absolute and given the prefix that lifts it.
std::wstring systemPath(std::string_view path);

// The way back, in UTF-8 and without such a prefix.
std::string textOf(std::wstring_view path);

// The absolute form: drive or network name, folders without "." and "..", backslashes.
std::wstring absoluteSystemPath(const std::wstring& path);

}  // namespace nivaro
