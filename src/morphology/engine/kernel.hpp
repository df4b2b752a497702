// The parts of a step that are compiled for several kinds of processor.
#pragma once

#include "morphology/engine/step_data.hpp"
#include "morphology/engine/strip.hpp"

namespace nivaro {

enum class Processor {
  Plain,     // one cell after the other: plain_step.hpp
  Portable,  // two lanes, on every machine
  Avx2,      // four lanes and fused multiply-add
  Avx512,    // eight lanes
};

struct NamedProcessor {
  const char* name;  // in small letters
  Processor processor;
};

constexpr NamedProcessor kProcessors[] = {{"plain", Processor::Plain},
                                          {"portable", Processor::Portable},
                                          {"avx2", Processor::Avx2},
                                          {"avx512", Processor::Avx512}};

// Results differ in the last bits between the kinds, never between two calls of one kind.
struct StepKernel {
  // For each row of the grid, first: clears the fields of the step where the sweeps will not set them and
  // fills the map of blocks.
  void (*startRow)(const StepData& step, std::ptrdiff_t j);

  // Whether all these values have the same bits as the copies of one.
  bool (*isUniform)(const double* values, std::ptrdiff_t count, const double* copies);

  // Both sweeps of one axis over a strip of lines, the first of which is line firstI or firstJ. The
  // second axis comes first: it sets bed change, concentration and adaptation, the first axis adds to
  // the bed change and sets the others where sand settles.
  void (*sweepSecondAxis)(const StepData& step, const StripArrays& strip, std::ptrdiff_t firstI);
  void (*sweepFirstAxis)(const StepData& step, const StripArrays& strip, std::ptrdiff_t firstJ);

  // What follows, each for row j (bed.hpp).
  void (*limitAndRaiseRow)(const StepData& step, std::ptrdiff_t j);
  void (*slumpRow)(const StepData& step, std::ptrdiff_t j);
  void (*raiseRowBySlumps)(const StepData& step, std::ptrdiff_t j);
  void (*rebuildRow)(const StepData& step, std::ptrdiff_t j);

  // For the tests: the functions of vector.hpp.
  void (*logarithms)(const double* x, double* result, int count);
  void (*exponentials)(const double* x, double* result, int count);
  void (*fifthRoots)(const double* x, double* result, int count);
};

bool isSupported(Processor processor);

// The one with most lanes that this machine has.
Processor bestProcessor();

// Null for the plain step, and where this machine cannot run it. One source for each family of processors.
const StepKernel* kernelOf(Processor processor);

extern const StepKernel kPortableKernel;
extern const StepKernel kAvx2Kernel;  // of the x86 family, as the next
extern const StepKernel kAvx512Kernel;

}  // namespace nivaro
