// A step kernel from its templates, for the sources that compile it for one kind of processor.
#pragma once

#include "morphology/engine/bed.hpp"
#include "morphology/engine/first_axis.hpp"
#include "morphology/engine/kernel.hpp"
#include "morphology/engine/second_axis.hpp"
#include "morphology/engine/start.hpp"

namespace nivaro {

template <class Real>
void logarithmLanes(const double* x, double* result, int count) {
  for (int k = 0; k < count; k += kLanes<Real>)
    store(result + k, logarithm(load<Real>(x + k, count - k)), count - k);
}

template <class Real>
void exponentialLanes(const double* x, double* result, int count) {
  for (int k = 0; k < count; k += kLanes<Real>)
    store(result + k, exponential(load<Real>(x + k, count - k)), count - k);
}

template <class Real>
void fifthRootLanes(const double* x, double* result, int count) {
  for (int k = 0; k < count; k += kLanes<Real>)
    store(result + k, fifthRoot(load<Real>(x + k, count - k)), count - k);
}

template <class Real>
constexpr StepKernel kKernelOfLanes = {
    startRow<Real>,         isUniform<Real>,        sweepSecondAxis<Real>,  sweepFirstAxis<Real>,
    limitAndRaiseRow<Real>, slumpRow<Real>,         raiseRowBySlumps<Real>, rebuildRow<Real>,
    logarithmLanes<Real>,   exponentialLanes<Real>, fifthRootLanes<Real>};

}  // namespace nivaro
