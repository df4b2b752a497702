// Failed writes that the system answers with a signal. The module knows what to do about an error; the
// signal would end the host without a word.
#pragma once

#include <pthread.h>
#include <signal.h>

#include <ctime>
#include <initializer_list>

namespace nivaro {

// While an object of this kind lives, writing to a pipe that nobody reads, or beyond the largest file
// that the user may have, is an ordinary error. The host's own handling of both stays as it is.
class ErrorsNotSignals {
 public:
  ErrorsNotSignals() {
    sigset_t held;
    sigemptyset(&held);
    sigaddset(&held, SIGPIPE);
    sigaddset(&held, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &held, &before_);
  }

  ~ErrorsNotSignals() {
    // Takes off what was raised meanwhile, but not what the host itself holds back.
    sigset_t raised;
    sigemptyset(&raised);
    for (const int signal : {SIGPIPE, SIGXFSZ})
      if (sigismember(&before_, signal) == 0) sigaddset(&raised, signal);
    const timespec noWait{};
    while (sigtimedwait(&raised, nullptr, &noWait) > 0) continue;
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
  }

  ErrorsNotSignals(const ErrorsNotSignals&) = delete;
  ErrorsNotSignals& operator=(const ErrorsNotSignals&) = delete;

 private:
  sigset_t before_;
};

}  // namespace nivaro
