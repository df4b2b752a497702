#include "morphology/engine/morphology_step.hpp"

#include <algorithm>

#include "morphology/bed_rebuild.hpp"
#include "morphology/engine/step_data.hpp"
#include "morphology/plain_step.hpp"

namespace nivaro {
namespace {

bool isEmpty(const Area& area) {
  return area.lastI < area.firstI || area.lastJ < area.firstJ;
}

// Limiting, raising, slumping and rebuilding follow the sweeps row by row, each as far behind the one
// before as the rows that it looks at, so that a row is still at hand when the next stage needs it.
// Slumping in a row reads the beds of both neighbours before they slump, and changes both.
class BedRows {
 public:
  BedRows(const StepKernel& kernel, const StepData& step) : kernel_(kernel), step_(step) {}

  // The sweeps are through with all rows up to j.
  void follow(std::ptrdiff_t j) {
    for (; next_ <= j; ++next_) shape(next_);
  }
  void finish() { follow(step_.lastJ + 3); }

 private:
  bool has(std::ptrdiff_t j) const { return j >= step_.firstJ && j <= step_.lastJ; }

  void shape(std::ptrdiff_t j) const {
    if (has(j)) kernel_.limitAndRaiseRow(step_, j);
    if (has(j - 1)) kernel_.slumpRow(step_, j - 1);
    if (has(j - 2)) kernel_.raiseRowBySlumps(step_, j - 2);
    if (has(j - 3) || j - 3 == step_.firstJ - 1) kernel_.rebuildRow(step_, j - 3);
  }

  const StepKernel& kernel_;
  const StepData& step_;
  std::ptrdiff_t next_ = step_.firstJ;
};

void sweepSecondAxis(const StepKernel& kernel, const StepData& step, StepWorkspace& workspace) {
  const std::ptrdiff_t lines = std::min(step.lastI - step.firstI + 1, kSecondStripLines);
  const StripArrays strip = workspace.strip(step, step.lastJ - step.firstJ + 1, lines);
  for (std::ptrdiff_t i = step.firstI; i <= step.lastI; i += kSecondStripLines)
    kernel.sweepSecondAxis(step, strip, i);
}

void sweepFirstAxis(const StepKernel& kernel, const StepData& step, StepWorkspace& workspace) {
  const StripArrays strip = workspace.strip(step, step.lastI - step.firstI + 1, kFirstStripLines);
  BedRows rows(kernel, step);
  for (std::ptrdiff_t j = step.firstJ; j <= step.lastJ; j += kFirstStripLines) {
    kernel.sweepFirstAxis(step, strip, j);
    rows.follow(std::min(j + kFirstStripLines - 1, step.lastJ));
  }
  rows.finish();
}

// Neither the bed at sides nor the flow is changed before all sweeps that look at it are through, so the
// sweeps do not see each other; their order fixes the last bits only.
void stepByLanes(const StepKernel& kernel, const StepInput& in, const Area& area,
                 StepWorkspace& workspace) {
  StepData step = stepData(in, area);
  if (!isEmpty(area))
    step.map = workspace.blockMap(area.lastJ - area.firstJ + 1, area.lastI - area.firstI + 1);
  for (int j = 1; j <= in.bed.zc.m(); ++j) kernel.startRow(step, j);
  // Without cells an area still has corners and sides on its rim.
  if (isEmpty(area)) return rebuildCornersAndSides(in, area);

  useUniformValues(step, kernel, workspace.uniformValues());
  sweepSecondAxis(kernel, step, workspace);
  sweepFirstAxis(kernel, step, workspace);
}

}  // namespace

void morphologyStep(const StepInput& in, const Area& area, StepWorkspace& workspace) {
  const StepKernel* kernel = kernelOf(workspace.processor());
  if (kernel == nullptr) return plainStep(in, area);
  stepByLanes(*kernel, in, area, workspace);
}

}  // namespace nivaro
