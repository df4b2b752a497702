// Compiled for AVX-512 (F, DQ and VL): run only after the processor was asked.
#include "morphology/engine/kernel.hpp"

#include <immintrin.h>

#include "morphology/engine/vector.hpp"

namespace nivaro {

using Real8 __attribute__((vector_size(64))) = double;

template <>
struct Lanes<Real8> {
  using Mask __attribute__((vector_size(64))) = std::int64_t;
  using Word __attribute__((vector_size(64))) = std::uint64_t;
  using Flags __attribute__((vector_size(32))) = std::int32_t;

  [[gnu::always_inline]] static Real8 squareRoot(Real8 x) { return _mm512_maskz_sqrt_pd(0xff, x); }
  [[gnu::always_inline]] static Real8 fused(Real8 a, Real8 b, Real8 c) {
    return _mm512_fmadd_pd(a, b, c);
  }
  [[gnu::always_inline]] static bool any(Mask mask) {
    const auto bits = reinterpret_cast<__m512i>(mask);
    return _mm512_test_epi64_mask(bits, bits) != 0;
  }
  [[gnu::always_inline]] static __mmask8 first(int count) {
    return static_cast<__mmask8>((1 << count) - 1);
  }
  [[gnu::always_inline]] static Real8 loadPart(const double* from, int count) {
    return _mm512_maskz_loadu_pd(first(count), from);
  }
  [[gnu::always_inline]] static Flags loadPart(const std::int32_t* from, int count) {
    return reinterpret_cast<Flags>(_mm256_maskz_loadu_epi32(first(count), from));
  }
  [[gnu::always_inline]] static void storePart(double* to, Real8 value, int count) {
    _mm512_mask_storeu_pd(to, first(count), value);
  }
};

}  // namespace nivaro

#include "morphology/engine/kernel_of_lanes.hpp"

namespace nivaro {

const StepKernel kAvx512Kernel = kKernelOfLanes<Real8>;

}  // namespace nivaro
