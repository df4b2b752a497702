// The parts of a step that are compiled for several kinds of processor.
#pragma once

#include "morphology/step_data.hpp"
#include "morphology/strip.hpp"

namespace nivaro {

enum class Processor {
  Portable,  // two lanes, on every machine
  Avx2,      // four lanes and fused multiply-add
  Avx512,    // eight lanes
};

// Results differ in the last bits between the kinds, never between two calls of one kind.
struct StepKernel {
  // Both sweeps along the second index, then both along the first.
  void (*addTransport)(const StepData& step, const StripArrays& strip);

  // For the tests: what the above consists of.
  void (*carry)(const StepData& step, const StripArrays& strip, std::ptrdiff_t positions);
  void (*logarithms)(const double* x, double* result, int count);
  void (*exponentials)(const double* x, double* result, int count);
};

bool isSupported(Processor processor);

// The one with most lanes that this machine has.
Processor bestProcessor();

// Of a kind that is supported.
const StepKernel& stepKernel(Processor processor);

}  // namespace nivaro
