// Programs of other makers as witnesses: they belong to the machine that builds, not to Wine.
#pragma once

#include <string>

namespace nivaro::gis::test {

struct Said {
  std::string text;
  int exitCode;
};

inline Said run(const std::string&) {
  return {"", -1};
}

inline bool isInstalled(const std::string&) {
  return false;
}

}  // namespace nivaro::gis::test
