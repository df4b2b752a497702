// Compiled for AVX2 with fused multiply-add: run only after the processor was asked.
#include "morphology/engine/kernel.hpp"

#include <immintrin.h>

#include "morphology/engine/vector.hpp"

namespace nivaro {

using Real4 __attribute__((vector_size(32))) = double;

template <>
struct Lanes<Real4> {
  using Mask __attribute__((vector_size(32))) = std::int64_t;
  using Word __attribute__((vector_size(32))) = std::uint64_t;
  using Flags __attribute__((vector_size(16))) = std::int32_t;

  [[gnu::always_inline]] static Real4 squareRoot(Real4 x) { return _mm256_sqrt_pd(x); }
  [[gnu::always_inline]] static Real4 fused(Real4 a, Real4 b, Real4 c) {
    return _mm256_fmadd_pd(a, b, c);
  }
  [[gnu::always_inline]] static bool any(Mask mask) {
    const auto bits = reinterpret_cast<__m256i>(mask);
    return _mm256_testz_si256(bits, bits) == 0;
  }
  [[gnu::always_inline]] static __m256i first(int count) {
    return _mm256_cmpgt_epi64(_mm256_set1_epi64x(count), _mm256_setr_epi64x(0, 1, 2, 3));
  }
  [[gnu::always_inline]] static Real4 loadPart(const double* from, int count) {
    return _mm256_maskload_pd(from, first(count));
  }
  [[gnu::always_inline]] static Flags loadPart(const std::int32_t* from, int count) {
    const __m128i lanes = _mm_cmpgt_epi32(_mm_set1_epi32(count), _mm_setr_epi32(0, 1, 2, 3));
    return reinterpret_cast<Flags>(_mm_maskload_epi32(from, lanes));
  }
  [[gnu::always_inline]] static void storePart(double* to, Real4 value, int count) {
    _mm256_maskstore_pd(to, first(count), value);
  }
};

}  // namespace nivaro

#include "morphology/engine/kernel_of_lanes.hpp"

namespace nivaro {

const StepKernel kAvx2Kernel = kKernelOfLanes<Real4>;

}  // namespace nivaro
