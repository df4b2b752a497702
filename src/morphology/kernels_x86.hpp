// The kernels compiled for newer processors of the x86 family.
#pragma once

#include "morphology/step_kernel.hpp"

namespace nivaro {

extern const StepKernel kAvx2Kernel;
extern const StepKernel kAvx512Kernel;

}  // namespace nivaro
