// The processor's floating-point settings, which belong to the host.
#pragma once

#include <cfenv>

namespace nivaro {

// While an object of this kind lives, arithmetic is the one that the module is written for: nothing
// traps, results are rounded to nearest, small numbers are kept, and what computes on the x87 stack has
// its 64 bits. At its end the thread has the settings and the raised flags that it came with, and none
// that were raised meanwhile.
//
// Hosts do change these. A Fortran program that is debugged traps invalid operations and divisions by
// zero, which lanes of the kernel do and throw away; some compilers flush small numbers to zero in the
// whole program; 64-bit Windows starts processes with an x87 precision of 53 bits, too few for the
// powers and logarithms of its C library.
class FloatingPointGuard {
 public:
  FloatingPointGuard() noexcept;
  ~FloatingPointGuard();
  FloatingPointGuard(const FloatingPointGuard&) = delete;
  FloatingPointGuard& operator=(const FloatingPointGuard&) = delete;

 private:
  std::fenv_t host_;  // laid out by the source for the processor
};

}  // namespace nivaro
