// What every exported routine passes through on its way in and out.
#pragma once

#include <exception>
#include <string_view>

#include "platform/floating_point_guard.hpp"

namespace nivaro {

// Ends the run for want of memory for a thing: the control file, or the routine of that name.
[[noreturn]] void endWithoutMemory(std::string_view thing);

// The work of a routine, in floating-point settings of our own. The module throws nothing itself; what
// the standard library throws is memory that it cannot have, also for a text of an absurd length, and
// that ends the run like any other error.
template <typename Work>
auto call(std::string_view memoryFor, const Work& work) noexcept {
  const FloatingPointGuard guard;
  try {
    return work();
  } catch (const std::exception&) {
    endWithoutMemory(memoryFor);
  }
}

}  // namespace nivaro
