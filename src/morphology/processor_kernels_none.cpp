#include "morphology/processor_kernels.hpp"

namespace nivaro {

const StepKernel* processorKernel(Processor) {
  return nullptr;
}

}  // namespace nivaro
