// Times of one morphology step, the library's on each kind of processor and the plain form's. step_ratios.py
// makes the table of ratios.
#include <benchmark/benchmark.h>

#include <string>

#include "benchmark_domain.hpp"
#include "morphology/engine/morphology_step.hpp"
#include "plain_form.hpp"

namespace nivaro::bench {
namespace {

void countCells(benchmark::State& state, const Domain& domain) {
  state.counters["active_cells"] = static_cast<double>(domain.activeCells());
}

void librarysStep(benchmark::State& state, const Shape& shape, Processor processor) {
  Domain domain(shape);
  StepWorkspace workspace(processor);
  morphologyStep(domain.input(), domain.area(), workspace);
  for (auto _ : state) morphologyStep(domain.input(), domain.area(), workspace);
  countCells(state, domain);
}

void plainStep(benchmark::State& state, const Shape& shape) {
  Domain domain(shape);
  for (auto _ : state) plainForm(domain.input(), domain.area());
  countCells(state, domain);
}

struct Variant {
  const char* text;
  bool variedGrains;
  bool velocityCentred;
  ActiveCells active;
};

constexpr Variant kVariants[] = {{"uniform", false, false, ActiveCells::All},
                                 {"grains", true, false, ActiveCells::All},
                                 {"centred", false, true, ActiveCells::All},
                                 {"band", false, false, ActiveCells::Band},
                                 {"square", false, false, ActiveCells::Square}};

void registerAll() {
  for (const auto& variant : kVariants) {
    for (int size : {100, 500, 2000}) {
      const Shape shape{size, variant.variedGrains, variant.velocityCentred, variant.active};
      const std::string name = std::string("/") + variant.text + "/" + std::to_string(size);
      const auto unit = benchmark::kMillisecond;
      benchmark::RegisterBenchmark(("plain" + name).c_str(), plainStep, shape)->Unit(unit);
      for (const auto& [text, processor] : kProcessors)
        if (processor != Processor::Plain && isSupported(processor))
          benchmark::RegisterBenchmark((text + name).c_str(), librarysStep, shape, processor)
              ->Unit(unit);
    }
  }
}

}  // namespace
}  // namespace nivaro::bench

int main(int count, char** arguments) {
  nivaro::bench::registerAll();
  benchmark::Initialize(&count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
