// For families of processors without a kernel of their own.
#include "morphology/engine/kernel.hpp"

namespace nivaro {

const StepKernel* kernelOf(Processor processor) {
  return processor == Processor::Portable ? &kPortableKernel : nullptr;
}

}  // namespace nivaro
