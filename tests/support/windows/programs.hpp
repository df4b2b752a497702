// A test's own program once more. Programs of other makers, the witnesses of what files hold, belong to
// the machine that builds, not to Wine.
#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace nivaro::gis::test {

struct Said {
  std::string text;  // both standard output and standard error
  int exitCode;
};

inline constexpr const char* kNoInput = "NUL";

inline Said run(const std::string& command) {
  FILE* pipe = _popen((command + " 2>&1").c_str(), "r");
  std::string text;
  std::array<char, 4096> block;
  for (std::size_t count; (count = std::fread(block.data(), 1, block.size(), pipe)) > 0;)
    text.append(block.data(), count);
  return {text, _pclose(pipe)};
}

inline bool isInstalled(const std::string&) {
  return false;
}

}  // namespace nivaro::gis::test
