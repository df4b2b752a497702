// From points of the world to cells of a grid. The grid's local x axis points in the direction
// `angle`; its second index grows with local x, its first index (the one that varies fastest in the
// field arrays) with local y.
#pragma once

#include <cstdint>
#include <limits>
#include <span>

#include "platform/real_to_integer.hpp"

namespace nivaro {

struct GridFrame {
  double x0 = 0.0;  // first corner
  double y0 = 0.0;
  double angle = 0.0;  // radians
  double dx = 1.0;     // cell sizes along local x and y
  double dy = 1.0;
  std::int32_t firstBound = 0;  // number of cells along each index
  std::int32_t secondBound = 0;
  std::int32_t firstOffset = 2;  // cell (a, b) is element (a + firstOffset, b + secondOffset)
  std::int32_t secondOffset = 2;
};

// Index of the cell at a local coordinate. Rounds toward zero, so that cell 1 reaches one cell size
// to the left of the grid's edge.
inline std::int32_t cellIndex(double coordinate, double cellSize) {
  const std::int32_t whole = truncated(coordinate / cellSize);
  return whole == std::numeric_limits<std::int32_t>::max() ? whole : whole + 1;
}

// The cells that a set of points may touch, and the box around the points.
struct SubGridArea {
  std::int32_t firstLow;
  std::int32_t secondLow;
  std::int32_t firstHigh;
  std::int32_t secondHigh;
  double minX;
  double minY;
  double maxX;
  double maxY;

  bool isEmpty() const { return firstLow > firstHigh || secondLow > secondHigh; }
};

// Of points in local coordinates, at least one. Low indices are raised to 0 and high ones lowered
// to the bounds.
SubGridArea setSubGridArea(std::span<const double> x, std::span<const double> y, double cellSize,
                           std::int32_t firstBound, std::int32_t secondBound);

}  // namespace nivaro
