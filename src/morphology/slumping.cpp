#include "morphology/slumping.hpp"

#include <algorithm>
#include <cstddef>

#include "morphology/activity.hpp"
#include "morphology/cell.hpp"

namespace nivaro {
namespace {

constexpr double kSmallestStep = 0.00001;  // m; below it beds count as level

// Height that falls from a neighbour dz higher at a distance: what stands above the stable slope.
double slumpHeight(double dz, double distance, const MorphologyParameters& p) {
  const double height = dz * (1.0 - (distance / dz) / p.slumpSlope);
  return height > p.slumpBedChangeLimit ? p.slumpBedChangeLimit : height;
}

// The lower cell pulls: it must be wet and have a bed of its own; of the neighbour, only the level
// counts. The height is the same on both, whatever their codes.
void slumpFrom(const StepInput& in, Cell cell, Cell neighbour, double distance) {
  const double above = -in.bed.zc(neighbour.i, neighbour.j);
  const double dz = above - -in.bed.zc(cell.i, cell.j);
  const bool slumps = in.fields.bedLimit(cell.i, cell.j) < above && dz > kSmallestStep &&
                      isTrue(in.flow.wet(cell.i, cell.j)) &&
                      distance / dz < in.parameters.slumpSlope;
  if (!slumps) return;

  const double height = slumpHeight(dz, distance, in.parameters);
  in.fields.appliedChange(cell.i, cell.j) += height;
  in.fields.appliedChange(neighbour.i, neighbour.j) -= height;
}

// A step in the bed between neighbours at a distance that is not higher than this slumps nothing. A
// trifle lower than the rule's own bound, which divides the other way.
double stableStep(double distance, double slope) {
  if (!(distance > 0.0) || !(slope > 0.0)) return kSmallestStep;
  return std::max(kSmallestStep, (1.0 - 1e-12) * distance / slope);
}

// Most cells slump nothing, which a look at their neighbours settles.
struct SteepNeighbours {
  const StepInput& in;
  double second = stableStep(in.settings.slumpDistanceSecond, in.parameters.slumpSlope);
  double first = stableStep(in.settings.slumpDistanceFirst, in.parameters.slumpSlope);

  bool operator()(int i, int j) const {
    const std::ptrdiff_t row = in.bed.zc.n();
    const double* z = &in.bed.zc(i, j);
    return (z[0] - z[row] > second) || (z[0] - z[-row] > second) || (z[0] - z[1] > first) ||
           (z[0] - z[-1] > first);
  }
};

}  // namespace

// The order of the neighbours fixes the last bits of the sums.
void addSlumpingOfRow(const StepInput& in, const Area& area, int j) {
  const double second = in.settings.slumpDistanceSecond;
  const double first = in.settings.slumpDistanceFirst;
  const SteepNeighbours isSteep{in};
  for (int i = area.firstI; i <= area.lastI; ++i) {
    if (!hasMovableBed(in.fields.bedCode(i, j)) || !isSteep(i, j)) continue;
    if (j < area.lastJ) slumpFrom(in, {i, j}, {i, j + 1}, second);
    if (j > area.firstJ) slumpFrom(in, {i, j}, {i, j - 1}, second);
    if (i < area.lastI) slumpFrom(in, {i, j}, {i + 1, j}, first);
    if (i > area.firstI) slumpFrom(in, {i, j}, {i - 1, j}, first);
  }
}

void addSlumping(const StepInput& in, const Area& area) {
  for (int j = area.firstJ; j <= area.lastJ; ++j) addSlumpingOfRow(in, area, j);
}

}  // namespace nivaro
