#include <cstdio>

#include "platform/standard_input.hpp"

namespace nivaro {

int readStandardInput() {
  return std::getc(stdin);
}

}  // namespace nivaro
