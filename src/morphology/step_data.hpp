// What a step works on as bare pointers to element (1, 1), for code that is compiled for one kind of
// processor and may share no inline function with the rest (lanes.hpp).
#pragma once

#include <cstddef>
#include <cstdint>

#include "morphology/capacity_terms.hpp"
#include "morphology/fields.hpp"
#include "morphology/parameters.hpp"
#include "platform/grid.hpp"

namespace nivaro {

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
  const double* firstSideDepth = nullptr;  // z1
  const double* secondSideDepth = nullptr;
  const double* bedDepth = nullptr;
  const double* d50 = nullptr;
  const double* d90 = nullptr;
  const double* inSituVoids = nullptr;
  const double* depositionVoids = nullptr;
  const double* bedLimit = nullptr;
  double* change = nullptr;
  double* concentration = nullptr;
  double* adaptation = nullptr;

  bool raiseSideDepth = false;
  double raiseFactor = 0.0;
  double cellSize = 0.0;
  double levelFactor = 0.0;  // level change in a bed without voids that a transport makes in a step
  MorphologyParameters parameters;
  CapacityTerms terms;
};

StepData stepData(const StepInput& in, const Area& area);

struct ResolvedTransport {
  double suspended;  // components along the index, kg/(m s)
  double bedLoad;
};

// What the lanes hand back because its values are not ordinary, by the plain functions.
ResolvedTransport plainTransport(const StepData& step, std::ptrdiff_t cell, double depth,
                                 double speed, double normal);

struct PlainSettling {
  double concentration;
  double adaptation;
  double deposited;
};

PlainSettling plainSettling(const StepData& step, double inflow, double equilibrium,
                            double discharge);

}  // namespace nivaro
