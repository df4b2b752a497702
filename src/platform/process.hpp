// The end of the process, as an interface so that tests can see it coming.
#pragma once

#include <cstdlib>

namespace nivaro {

class Process {
 public:
  virtual ~Process() = default;
  [[noreturn]] virtual void end(int exitCode) = 0;
};

class RealProcess final : public Process {
 public:
  [[noreturn]] void end(int exitCode) override;
};

// The same for callers that never return themselves: g++ forgets across a virtual call that nothing
// comes back from it.
[[noreturn]] inline void endProcess(Process& process, int exitCode) {
  process.end(exitCode);
  std::abort();
}

}  // namespace nivaro
