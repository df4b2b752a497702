// What the way in and out of an exported routine costs: floating-point settings of the host put aside
// and brought back.
#include <benchmark/benchmark.h>

#include <cfenv>

#include "nivaro_morphology.h"
#include "platform/floating_point_guard.hpp"
#include "spatial/plane.hpp"

namespace nivaro::bench {
namespace {

double x = 3.0, y = 4.0, origin = 0.0;

void distanceInside(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(distance(origin, origin, x, y));
}

void distanceExported(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(DISTANCE(&origin, &origin, &x, &y));
}

// Of a host whose settings are ours, or which rounds upward: everything is set and set back.
void guard(benchmark::State& state, int rounding) {
  std::fesetround(rounding);
  for (auto _ : state) const FloatingPointGuard settings;
  std::fesetround(FE_TONEAREST);
}

void standardEnvironment(benchmark::State& state) {
  for (auto _ : state) {
    std::fenv_t host;
    std::fegetenv(&host);
    std::fesetenv(FE_DFL_ENV);
    std::fesetenv(&host);
  }
}

BENCHMARK(distanceInside);
BENCHMARK(distanceExported);
BENCHMARK_CAPTURE(guard, usual, FE_TONEAREST);
BENCHMARK_CAPTURE(guard, other, FE_UPWARD);
BENCHMARK(standardEnvironment);

}  // namespace
}  // namespace nivaro::bench

BENCHMARK_MAIN();
