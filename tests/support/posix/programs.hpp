// Programs of other makers as witnesses, what they say of a file; and a test's own program once more.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace nivaro::gis::test {

struct Said {
  std::string text;  // both standard output and standard error
  int exitCode;
};

inline constexpr const char* kNoInput = "/dev/null";

inline Said run(const std::string& command) {
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  std::string text;
  std::array<char, 4096> block;
  for (std::size_t count; (count = std::fread(block.data(), 1, block.size(), pipe)) > 0;)
    text.append(block.data(), count);
  const int status = pclose(pipe);
  return {text, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

inline bool isInstalled(const std::string& program) {
  return run("command -v " + program).exitCode == 0;
}

}  // namespace nivaro::gis::test
