// Where a path as hosts write it (backslashes or slashes, any letter case) lies on this system.
// Each system has a source of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nivaro {

struct HostPath {
  std::string path;     // in this system's form; names that do not exist are kept as given
  bool exists = false;  // there is a file (not a folder) of this name
  std::vector<std::string> ambiguous;  // all files meant, where there are several
};

// The exact name is taken first. Where it does not exist, a name that differs from it in letter
// case only is taken, folders and file alike; where there are several, `ambiguous` lists them all
// and `exists` is false. The same holds for the folders above a file that does not exist yet. Case
// is that of the letters a to z.
HostPath hostPath(std::string_view path);

// The absolute form of such a path, without "." and "..".
std::string absolutePath(std::string_view path);

// Whether the folder exists, and its creation with all folders above it; true when it is there
// afterwards. No shell is involved. A blank folder is the working folder.
bool folderExists(std::string_view folder);
bool createFolder(std::string_view folder);

}  // namespace nivaro
