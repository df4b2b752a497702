// The end of the process, as an interface so that tests can see it coming.
#pragma once

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

}  // namespace nivaro
