// The kinds of processor that a test can run on this machine.
#pragma once

#include <vector>

#include "morphology/step_kernel.hpp"

namespace nivaro {

inline std::vector<Processor> supportedProcessors() {
  std::vector<Processor> result;
  for (Processor p : {Processor::Portable, Processor::Avx2, Processor::Avx512})
    if (isSupported(p)) result.push_back(p);
  return result;
}

}  // namespace nivaro
