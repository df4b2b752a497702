// What a step works on as bare pointers to element (1, 1), for code that is compiled for one kind of
// processor and may share no inline function with the rest (vector.hpp).
#pragma once

#include <cstddef>
#include <cstdint>

#include "morphology/engine/capacity.hpp"
#include "morphology/fields.hpp"
#include "morphology/parameters.hpp"
#include "platform/grid.hpp"

namespace nivaro {

// A field that a step reads cell by cell. One that has the same value wherever sand is carried is
// read from a few copies of it, which spares the memory.
struct CellValues {
  const double* first = nullptr;
  std::ptrdiff_t stride = 1;  // 0 for copies

  [[gnu::always_inline]] const double* at(std::ptrdiff_t cell) const {
    return first + cell * stride;
  }
};

// What any cell of a block takes part in: kBlock cells of a row of the area from firstI + b kBlock on.
constexpr std::ptrdiff_t kBlock = 64;
constexpr unsigned char kCarriesSand = 1;
constexpr unsigned char kHasMovableBed = 2;

// By row and block, both from 0.
struct BlockMap {
  unsigned char* blocks = nullptr;
  std::ptrdiff_t perRow = 0;

  [[gnu::always_inline]] bool has(std::ptrdiff_t row, std::ptrdiff_t block,
                                  unsigned char bit) const {
    return (blocks[row * perRow + block] & bit) != 0;
  }
};

struct StepKernel;

// Element (i, j) of every array is number (j - 1) n + i - 1.
struct StepData {
  std::ptrdiff_t n = 0;
  std::ptrdiff_t firstI = 0, firstJ = 0, lastI = 0, lastJ = 0;  // the area, counted from 1

  const std::int32_t* wet = nullptr;
  const std::int32_t* flow = nullptr;
  const std::int32_t* bedCode = nullptr;
  const double* waterLevel = nullptr;
  const double* firstVelocity = nullptr;  // v1
  const double* secondVelocity = nullptr;
  double* firstSideDepth = nullptr;  // z1
  double* secondSideDepth = nullptr;
  double* cornerDepth = nullptr;
  double* bedDepth = nullptr;
  CellValues d50;
  CellValues d90;
  CellValues inSituVoids;
  CellValues depositionVoids;
  CellValues bedLimit;
  bool uniformGrain = false;  // d50 and d90 are copies
  bool uniformVoids = false;  // both are copies, and ordinary numbers
  double* change = nullptr;
  double* concentration = nullptr;
  double* adaptation = nullptr;
  double* previousChange = nullptr;
  double* slumps = nullptr;  // the applied change, as slumping uses it
  double* spare = nullptr;

  BlockMap map;

  bool raiseSideDepth = false;
  double raiseFactor = 0.0;
  double cellSize = 0.0;
  double settlingVelocity = 0.0;  // fall velocity times concentration factor, m/s
  double levelFactor = 0.0;  // level change in a bed without voids that a transport makes in a step
  double erosionLevel = 0.0;  // the same in a bed with uniform voids
  double depositionLevel = 0.0;
  double stableStepFirst = 0.0;  // m, in the bed between neighbours: what is not higher stays
  double stableStepSecond = 0.0;
  MorphologyParameters parameters;
  CapacityTerms terms;

  const StepInput* input = nullptr;  // for what the plain loops compute
};

// The step refers to the input from then on.
StepData stepData(const StepInput& in, const Area& area);
StepData stepData(const StepInput&& in, const Area& area) = delete;

// As many copies of a value as there are lanes at most.
struct UniformValues {
  static constexpr std::size_t kCopies = 8;
  double of[5][kCopies];
};

// Reads fields that are uniform wherever sand is carried from copies from then on. The map is filled.
void useUniformValues(StepData& step, const StepKernel& kernel, UniformValues& values);

}  // namespace nivaro
