#include "spatial/grid_frame.hpp"

#include <algorithm>

namespace nivaro {

SubGridArea setSubGridArea(std::span<const double> x, std::span<const double> y, double cellSize,
                           std::int32_t firstBound, std::int32_t secondBound) {
  const auto [minX, maxX] = std::ranges::minmax(x);
  const auto [minY, maxY] = std::ranges::minmax(y);
  const auto low = [&](double least) { return std::max(0, cellIndex(least, cellSize)); };
  const auto high = [&](double most, std::int32_t bound) {
    return std::min(bound, cellIndex(most, cellSize));
  };
  return {.firstLow = low(minY),
          .secondLow = low(minX),
          .firstHigh = high(maxY, firstBound),
          .secondHigh = high(maxX, secondBound),
          .minX = minX,
          .minY = minY,
          .maxX = maxX,
          .maxY = maxY};
}

}  // namespace nivaro
