// Kernels for kinds of processor that this machine may have.
#pragma once

#include "morphology/step_kernel.hpp"

namespace nivaro {

// Null where this machine cannot run it. One source for each family of processors.
const StepKernel* processorKernel(Processor processor);

}  // namespace nivaro
