#include <pthread.h>
#include <signal.h>
#include <stdio_ext.h>

#include <cstdio>
#include <ctime>

#include "platform/standard_output.hpp"

namespace nivaro {
namespace {

// While an object of this kind lives, a pipe that nobody reads is an ordinary error and does not
// end the process. The host's own handling of such pipes stays as it is.
class BrokenPipeIsError {
 public:
  BrokenPipeIsError() {
    sigemptyset(&brokenPipe_);
    sigaddset(&brokenPipe_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe_, &before_);
  }

  ~BrokenPipeIsError() {
    if (sigismember(&before_, SIGPIPE) == 1) return;
    const timespec noWait{};
    sigtimedwait(&brokenPipe_, nullptr, &noWait);  // takes off a signal that was raised meanwhile
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

  BrokenPipeIsError(const BrokenPipeIsError&) = delete;
  BrokenPipeIsError& operator=(const BrokenPipeIsError&) = delete;

 private:
  sigset_t brokenPipe_;
  sigset_t before_;
};

}  // namespace

void writeStandardOutput(std::string_view text) {
  const BrokenPipeIsError guard;
  std::fwrite(text.data(), 1, text.size(), stdout);
  // What cannot be written must not wait in the stream: the C library would try once more when the
  // process ends, without this guard.
  if (std::fflush(stdout) != 0) __fpurge(stdout);
}

}  // namespace nivaro
