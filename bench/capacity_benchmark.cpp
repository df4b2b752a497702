// Time of one transport capacity by the plain function, which serves what is not ordinary.
#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#include "morphology/transport_capacity.hpp"

namespace nivaro::bench {
namespace {

MorphologyParameters sand() {
  MorphologyParameters p;
  setDefaults(p);
  p.fallVelocity = 0.02;
  p.currentRelatedRoughness = 0.05;
  p.mixingLayerThickness = 0.1;
  p.referenceLevel = 0.05;
  return p;
}

// Depths and speeds of a river, so that no branch is learned by heart.
void capacity(benchmark::State& state, bool grainEveryTime) {
  constexpr std::size_t count = 1024;
  const MorphologyParameters p = sand();
  const GrainTerms grain = grainTerms(0.0002, p);
  std::vector<double> depth(count), speed(count);
  for (std::size_t k = 0; k < count; ++k) {
    depth[k] = 1.0 + static_cast<double>(k * 37 % 100) * 0.03;
    speed[k] = static_cast<double>(k * 61 % 100) * 0.015;
  }
  std::size_t k = 0;
  for (auto _ : state) {
    const GrainTerms terms = grainEveryTime ? grainTerms(0.0002, p) : grain;
    benchmark::DoNotOptimize(transportCapacity(depth[k], speed[k], terms, 0.0003, p));
    k = (k + 1) % count;
  }
}

BENCHMARK_CAPTURE(capacity, grain_known, false);
BENCHMARK_CAPTURE(capacity, grain_every_time, true);

}  // namespace
}  // namespace nivaro::bench

BENCHMARK_MAIN();
