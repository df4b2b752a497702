// The cells whose centres lie inside a region.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/grid.hpp"
#include "spatial/grid_frame.hpp"
#include "text/report.hpp"

namespace nivaro {

// A rectangle of field elements and, for each of them, the first index varying fastest, 1 when its
// cell is inside, else 0.
struct InsideCells {
  Area range;
  std::span<const std::uint8_t> inside;
};

class RegionFill {
 public:
  // Cells of the region with these vertices (local coordinates, changed by the call) and polygon
  // ends, in a field of n by m elements. Rows of cells are scanned from low to high second index:
  // a centre is inside when an odd number of edges crosses its row's centre line before it, so
  // holes and polygons in holes come out right. A centre on a right boundary is inside, one on a
  // left boundary is not. The reports are for the screen.
  //
  // The result holds until the next call. Memory is taken for the range that the region may touch
  // and kept for the next one, whose cost so depends on that region's size alone.
  Outcome<InsideCells> find(std::span<double> x, std::span<double> y,
                            std::span<const std::int32_t> polygonEnds, const GridFrame& frame,
                            int n, int m);

 private:
  std::vector<std::uint8_t> cells_;
};

}  // namespace nivaro
