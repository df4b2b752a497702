// Sets of polygons: the vertices of all of them one after another, each polygon followed by one
// closing slot. A polygon is closed in its vertices themselves (its last equals its first), so the
// step to the closing slot and the step from there to the next polygon are no edges.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "text/report.hpp"

namespace nivaro {

// Calls visit(first, end) for each polygon: its vertices stand at the positions first to end - 1,
// counted from 0. `ends` holds the number of each polygon's last vertex, counted from 1. False when
// edges are left behind the last polygon: then table and vertices do not belong together.
template <typename Visit>
bool forEachPolygon(std::size_t vertexCount, std::span<const std::int32_t> ends, Visit visit) {
  std::size_t first = 0;
  for (const std::int32_t last : ends) {
    if (first + 1 >= vertexCount) return true;
    const auto end = static_cast<std::size_t>(std::max(last, std::int32_t{0}));
    if (first < end) visit(first, std::min(end, vertexCount));
    first = std::max(first, end) + 1;
  }
  return first + 1 >= vertexCount;
}

// Whether a point lies inside an odd number of the polygons, by the crossings of a ray to its left.
// `minX` is the least x of the vertices; `place` tells apart, in the report, who asks. The report
// is for the screen (see screen_stop.hpp).
Outcome<bool> insidePolygon(double px, double py, std::span<const double> x,
                            std::span<const double> y, double minX,
                            std::span<const std::int32_t> ends, int place = 1);

}  // namespace nivaro
