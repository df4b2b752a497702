#include "morphology/step_kernel.hpp"

#include "morphology/kernel_lanes.hpp"
#include "morphology/processor_kernels.hpp"

namespace nivaro {

bool isSupported(Processor processor) {
  return processor <= Processor::Portable || processorKernel(processor) != nullptr;
}

Processor bestProcessor() {
  for (Processor processor : {Processor::Avx512, Processor::Avx2})
    if (isSupported(processor)) return processor;
  return Processor::Portable;
}

const StepKernel& stepKernel(Processor processor) {
  const StepKernel* kernel = processorKernel(processor);
  return kernel != nullptr ? *kernel : kKernelLanes<Real2>;
}

}  // namespace nivaro
