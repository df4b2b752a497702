#include "morphology/slumping.hpp"

namespace nivaro {
namespace {

// Height that falls from a neighbour dz higher at a distance: what stands above the stable slope.
double slumpHeight(double dz, double distance, const MorphologyParameters& p) {
  const double height = dz * (1.0 - (distance / dz) / p.slumpSlope);
  return height > p.slumpBedChangeLimit ? p.slumpBedChangeLimit : height;
}

// The lower cell pulls: it must be wet and have a bed of its own; of the neighbour, only the level
// counts. The height is the same on both, whatever their codes.
void slumpFrom(const StepInput& in, Cell cell, Cell neighbour, double distance) {
  const double above = -at(in.bed.zc, neighbour);
  const double dz = above - -at(in.bed.zc, cell);
  const bool slumps = at(in.fields.bedLimit, cell) < above && dz > kSmallestSlumpStep &&
                      isTrue(at(in.flow.wet, cell)) && distance / dz < in.parameters.slumpSlope;
  if (!slumps) return;

  const double height = slumpHeight(dz, distance, in.parameters);
  at(in.fields.appliedChange, cell) += height;
  at(in.fields.appliedChange, neighbour) -= height;
}

}  // namespace

// The order of the neighbours fixes the last bits of the sums.
void addSlumping(const StepInput& in, const Area& area, Cell first, int count) {
  const double distanceSecond = in.settings.slumpDistanceSecond;
  const double distanceFirst = in.settings.slumpDistanceFirst;
  const int j = first.j;
  for (int i = first.i; i < first.i + count; ++i) {
    if (!hasMovableBed(in, {i, j})) continue;
    if (j < area.lastJ) slumpFrom(in, {i, j}, {i, j + 1}, distanceSecond);
    if (j > area.firstJ) slumpFrom(in, {i, j}, {i, j - 1}, distanceSecond);
    if (i < area.lastI) slumpFrom(in, {i, j}, {i + 1, j}, distanceFirst);
    if (i > area.firstI) slumpFrom(in, {i, j}, {i - 1, j}, distanceFirst);
  }
}

void addSlumping(const StepInput& in, const Area& area) {
  for (int j = area.firstJ; j <= area.lastJ; ++j)
    addSlumping(in, area, {area.firstI, j}, area.lastI - area.firstI + 1);
}

}  // namespace nivaro
