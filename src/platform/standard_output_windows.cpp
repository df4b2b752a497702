#include <cstdio>

#include "platform/standard_output.hpp"

namespace nivaro {

// Nothing is kept for a later attempt: the C library of this system drops what a failed write leaves
// in the stream.
void writeStandardOutput(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

}  // namespace nivaro
