#include "morphology/slumping.hpp"

#include <algorithm>
#include <limits>

#include "morphology/activity.hpp"

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

}  // namespace

double stableStep(double distance, double slope) {
  if (!(distance > 0.0) || !(slope > 0.0)) return kSmallestStep;
  const double bound = (1.0 - 1e-12) * distance / slope;
  return bound <= std::numeric_limits<double>::max() ? std::max(kSmallestStep, bound)
                                                     : kSmallestStep;
}

// The order of the neighbours fixes the last bits of the sums.
void addSlumping(const StepInput& in, const Area& area, Cell first, int count) {
  const double distanceSecond = in.settings.slumpDistanceSecond;
  const double distanceFirst = in.settings.slumpDistanceFirst;
  const int j = first.j;
  for (int i = first.i; i < first.i + count; ++i) {
    if (!hasMovableBed(in.fields.bedCode(i, j))) continue;
    if (j < area.lastJ) slumpFrom(in, {i, j}, {i, j + 1}, distanceSecond);
    if (j > area.firstJ) slumpFrom(in, {i, j}, {i, j - 1}, distanceSecond);
    if (i < area.lastI) slumpFrom(in, {i, j}, {i + 1, j}, distanceFirst);
    if (i > area.firstI) slumpFrom(in, {i, j}, {i - 1, j}, distanceFirst);
  }
}

}  // namespace nivaro
