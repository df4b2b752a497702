#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/standard_input.hpp"

namespace nivaro {

// A timer of the host interrupts the wait, and whoever started the host may have left its input in the
// state in which a read does not wait. Neither is the end.
int readStandardInput() {
  for (;;) {
    errno = 0;
    const int c = std::getc(stdin);
    if (c != EOF || (errno != EINTR && errno != EAGAIN)) return c;
    std::clearerr(stdin);
    pollfd input{STDIN_FILENO, POLLIN, 0};
    ::poll(&input, 1, -1);
  }
}

}  // namespace nivaro
