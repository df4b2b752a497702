#include "morphology/bed_change.hpp"

#include "morphology/activity.hpp"
#include "morphology/clamp.hpp"

namespace nivaro {
namespace {

double centredChange(const StepInput& in, int i, int j) {
  const double weight = in.parameters.timeCentringFactor;
  const double limit = in.parameters.bedChangeLimit;
  return clamped(
      weight * in.fields.cellChange(i, j) + (1.0 - weight) * in.fields.previousChange(i, j), -limit,
      limit);
}

}  // namespace

void limitAndCentre(const StepInput& in, const Area& area) {
  for (int j = area.firstJ; j <= area.lastJ; ++j) {
    for (int i = area.firstI; i <= area.lastI; ++i) {
      const double change = isActiveAndWet(in, i, j) ? centredChange(in, i, j) : 0.0;
      in.fields.cellChange(i, j) = change;
      in.fields.previousChange(i, j) = change;
    }
  }
}

void raiseBed(const StepInput& in, const Area& area, Grid<const double> change) {
  for (int j = area.firstJ; j <= area.lastJ; ++j) {
    for (int i = area.firstI; i <= area.lastI; ++i) {
      if (hasMovableBed(in.fields.bedCode(i, j))) in.bed.zc(i, j) -= change(i, j);
    }
  }
}

}  // namespace nivaro
