#include "morphology/bed_rebuild.hpp"

#include <algorithm>

#include "morphology/activity.hpp"

namespace nivaro {
namespace {

// Cells beyond the grid have no bed, so that an area that fills the grid is served too.
bool hasBed(const StepInput& in, Cell c) {
  const auto& code = in.fields.bedCode;
  return c.i <= code.n() && c.j <= code.m() && hasMovableBed(code(c.i, c.j));
}

double sideDepth(const StepInput& in, Cell a, Cell b) {
  const double first = in.bed.zc(a.i, a.j);
  const double second = in.bed.zc(b.i, b.j);
  return in.parameters.cellSidesHigh ? std::min(first, second) : 0.5 * (first + second);
}

void rebuildSides(const StepInput& in, Cell c) {
  const Cell nextFirst{c.i + 1, c.j};
  const Cell nextSecond{c.i, c.j + 1};
  if (!hasBed(in, c)) return;
  if (hasBed(in, nextSecond)) in.bed.z2(c.i, c.j) = sideDepth(in, c, nextSecond);
  if (hasBed(in, nextFirst)) in.bed.z1(c.i, c.j) = sideDepth(in, c, nextFirst);
}

void rebuildCorner(const StepInput& in, Cell c) {
  const Cell around[] = {c, {c.i + 1, c.j}, {c.i, c.j + 1}, {c.i + 1, c.j + 1}};
  double sum = 0.0;
  int count = 0;
  for (const Cell& cell : around) {
    if (!hasBed(in, cell)) continue;
    sum += in.bed.zc(cell.i, cell.j);
    ++count;
  }
  if (count > 0) in.bed.zpts(c.i, c.j) = sum / count;
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

void confineBedCodes(const StepInput& in, const Area& area) {
  const auto& code = in.fields.bedCode;
  for (int j = 1; j <= code.m(); ++j) {
    const bool rowInside = j >= area.firstJ && j <= area.lastJ;
    for (int i = 1; i <= code.n(); ++i) {
      if (!rowInside || i < area.firstI || i > area.lastI) code(i, j) = 0;
    }
  }
}

void lowerBedLimits(const StepInput& in, const Area& area) {
  for (int j = area.firstJ; j <= area.lastJ; ++j) {
    for (int i = area.firstI; i <= area.lastI; ++i) {
      if (!hasMovableBed(in.fields.bedCode(i, j))) continue;
      in.fields.bedLimit(i, j) = std::min(in.fields.bedLimit(i, j), -in.bed.zc(i, j));
    }
  }
}

}  // namespace nivaro
