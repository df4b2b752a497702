#include "platform/environment.hpp"

#include <cstdlib>

namespace nivaro {

std::string environmentVariable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace nivaro
