#include "morphology/bed_change.hpp"

#include "morphology/cell.hpp"
#include "morphology/elementary.hpp"

namespace nivaro {
namespace {

double centredChange(const StepInput& in, Cell c) {
  const double theta = in.parameters.timeCentringFactor;
  const double limit = in.parameters.bedChangeLimit;
  const double change =
      theta * at(in.fields.cellChange, c) + (1.0 - theta) * at(in.fields.previousChange, c);
  return clamped(change, -limit, limit);
}

}  // namespace

void centreAndLimit(const StepInput& in, const Area& area) {
  for (int j = area.firstJ; j <= area.lastJ; ++j)
    for (int i = area.firstI; i <= area.lastI; ++i) {
      const double change = isActiveAndWet(in, {i, j}) ? centredChange(in, {i, j}) : 0.0;
      in.fields.cellChange(i, j) = change;
      in.fields.previousChange(i, j) = change;
    }
}

// The host's beds are depths, positive downward.
void raiseBed(const StepInput& in, const Area& area, const Grid<double>& change) {
  for (int j = area.firstJ; j <= area.lastJ; ++j)
    for (int i = area.firstI; i <= area.lastI; ++i)
      if (hasMovableBed(in, {i, j})) in.bed.zc(i, j) -= change(i, j);
}

}  // namespace nivaro
