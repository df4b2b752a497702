#include "morphology/engine/kernel.hpp"

#include "morphology/engine/kernel_of_lanes.hpp"

namespace nivaro {

const StepKernel kPortableKernel = kKernelOfLanes<Real2>;

bool isSupported(Processor processor) {
  return processor == Processor::Plain || kernelOf(processor) != nullptr;
}

Processor bestProcessor() {
  for (Processor processor : {Processor::Avx512, Processor::Avx2})
    if (isSupported(processor)) return processor;
  return Processor::Portable;
}

}  // namespace nivaro
