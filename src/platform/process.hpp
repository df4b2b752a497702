// The process: its end, as an interface so that tests can see it coming, and what its user set around it.
#pragma once

#include <cstdlib>
#include <string>

namespace nivaro {

class Process {
 public:
  virtual ~Process() = default;
  [[noreturn]] virtual void end(int exitCode) = 0;
  // An environment variable, empty where there is none.
  virtual std::string environment(const char* name) const = 0;
};

class RealProcess final : public Process {
 public:
  [[noreturn]] void end(int exitCode) override;
  std::string environment(const char* name) const override {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
  }
};

// The same for callers that never return themselves: g++ forgets across a virtual call that nothing
// comes back from it.
[[noreturn]] inline void endProcess(Process& process, int exitCode) {
  process.end(exitCode);
  std::abort();
}

}  // namespace nivaro
