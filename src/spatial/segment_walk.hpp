// The cells that a straight segment passes through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "spatial/grid_frame.hpp"
#include "text/report.hpp"

namespace nivaro {

struct CellIndex {
  std::int32_t first;
  std::int32_t second;

  bool operator==(const CellIndex&) const = default;
};

// A segment in the local coordinates of a grid.
struct Segment {
  double ax;
  double ay;
  double bx;
  double by;
};

class SegmentWalk {
 public:
  static constexpr std::size_t kMaxCells = 10000;

  // The cells from A to B, one for each centre line of a row (for a steep segment) or of a column
  // that the segment crosses; a crossing right at A does not count, one at B does. At its ends the
  // segment also takes the cell whose other centre line it crosses. Cells outside the grid are
  // listed too. The list holds until the next call; the report of one too long is for the screen.
  Outcome<std::span<const CellIndex>> cells(const Segment& segment, double dx, double dy);

 private:
  std::vector<CellIndex> cells_;
};

}  // namespace nivaro
