#include "morphology/engine/kernel.hpp"

namespace nivaro {

const StepKernel* kernelOf(Processor processor) {
  __builtin_cpu_init();
  const bool avx2 = __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
  if (processor == Processor::Avx2 && avx2) return &kAvx2Kernel;
  const bool avx512 = avx2 && __builtin_cpu_supports("avx512f") != 0 &&
                      __builtin_cpu_supports("avx512dq") != 0 &&
                      __builtin_cpu_supports("avx512vl") != 0;
  if (processor == Processor::Avx512 && avx512) return &kAvx512Kernel;
  return processor == Processor::Portable ? &kPortableKernel : nullptr;
}

}  // namespace nivaro
