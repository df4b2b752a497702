#include <stdio_ext.h>

#include <cstdio>

#include "platform/errors_not_signals.hpp"
#include "platform/standard_output.hpp"

namespace nivaro {

void writeStandardOutput(std::string_view text) {
  const ErrorsNotSignals guard;
  std::fwrite(text.data(), 1, text.size(), stdout);
  // What cannot be written must not wait in the stream: the C library would try once more when the
  // process ends, without this guard.
  if (std::fflush(stdout) != 0) __fpurge(stdout);
}

}  // namespace nivaro
