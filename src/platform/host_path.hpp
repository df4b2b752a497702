// Where a path of the described kind (backslashes or slashes, any letter case) lies on this system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nivaro {

struct HostPath {
  std::string path;  // in this system's form; names that do not exist are kept as given
  bool exists = false;  // there is a file (not a folder) of this name
  std::vector<std::string> ambiguous;  // more than one file differs from the name in case only
};

// The exact name is taken first. Where it does not exist, a name that differs from it in letter case
// only is taken, folders and file alike; where there are several, `ambiguous` lists them all and
// `exists` is false.
HostPath hostPath(std::string_view path);

// Whether the folder exists, and its creation with all folders above it. No shell is involved.
bool folderExists(std::string_view folder);
bool createFolder(std::string_view folder);

}  // namespace nivaro
