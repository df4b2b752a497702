#include "morphology/bed_rebuild.hpp"

#include <algorithm>

namespace nivaro {
namespace {

// Cells beyond the grid have no bed, so that an area that fills the grid is served too.
bool hasBed(const StepInput& in, Cell c) {
  return c.i <= in.fields.bedCode.n() && c.j <= in.fields.bedCode.m() && hasMovableBed(in, c);
}

double sideDepth(const StepInput& in, Cell a, Cell b) {
  const double first = at(in.bed.zc, a);
  const double second = at(in.bed.zc, b);
  return in.parameters.cellSidesHigh ? std::min(first, second) : 0.5 * (first + second);
}

void rebuildSides(const StepInput& in, Cell c) {
  const Cell nextFirst = moved(c, Axis::First, 1);
  const Cell nextSecond = moved(c, Axis::Second, 1);
  if (!hasBed(in, c)) return;
  if (hasBed(in, nextSecond)) at(in.bed.z2, c) = sideDepth(in, c, nextSecond);
  if (hasBed(in, nextFirst)) at(in.bed.z1, c) = sideDepth(in, c, nextFirst);
}

void rebuildCorner(const StepInput& in, Cell c) {
  const Cell around[] = {c, {c.i + 1, c.j}, {c.i, c.j + 1}, {c.i + 1, c.j + 1}};
  double sum = 0.0;
  int count = 0;
  for (const Cell& cell : around) {
    if (!hasBed(in, cell)) continue;
    sum += at(in.bed.zc, cell);
    ++count;
  }
  if (count > 0) at(in.bed.zpts, c) = sum / count;
}

// Sets the bed code to 0 in every cell outside the area.
void confineBedCodes(const StepInput& in, const Area& area) {
  const auto& code = in.fields.bedCode;
  for (int j = 1; j <= code.m(); ++j) {
    const bool rowInside = j >= area.firstJ && j <= area.lastJ;
    for (int i = 1; i <= code.n(); ++i) {
      if (!rowInside || i < area.firstI || i > area.lastI) code(i, j) = 0;
    }
  }
}

// Lowers the bed limits of the area that lie above the present bed to it.
void lowerBedLimits(const StepInput& in, const Area& area) {
  for (int j = area.firstJ; j <= area.lastJ; ++j) {
    for (int i = area.firstI; i <= area.lastI; ++i) {
      if (!hasMovableBed(in, {i, j})) continue;
      in.fields.bedLimit(i, j) = std::min(in.fields.bedLimit(i, j), -in.bed.zc(i, j));
    }
  }
}

}  // namespace

void rebuildCornersAndSides(const StepInput& in, Cell first, int count) {
  for (int i = first.i; i < first.i + count; ++i) {
    rebuildSides(in, {i, first.j});
    rebuildCorner(in, {i, first.j});
  }
}

void rebuildCornersAndSides(const StepInput& in, const Area& area) {
  const int firstI = std::max(area.firstI - 1, 1);
  const int lastI = std::min(area.lastI, in.fields.bedCode.n());
  const int lastJ = std::min(area.lastJ, in.fields.bedCode.m());
  for (int j = std::max(area.firstJ - 1, 1); j <= lastJ; ++j)
    rebuildCornersAndSides(in, {firstI, j}, lastI - firstI + 1);
}

void smoothBed(const StepInput& in, const Area& area) {
  confineBedCodes(in, area);
  lowerBedLimits(in, area);
  rebuildCornersAndSides(in, area);
}

}  // namespace nivaro
