#include "spatial/region_fill.hpp"

#include <algorithm>
#include <new>
#include <string>

#include "platform/support.hpp"
#include "spatial/polygon.hpp"

namespace nivaro {
namespace {

// Moves the coordinates so that the centre of the field element with index b lies at b cell sizes.
void shiftToField(std::span<double> coordinates, std::int32_t offset, double cellSize) {
  for (double& c : coordinates) c += (offset + 0.5) * cellSize;
}

Area searchRange(std::span<const double> x, std::span<const double> y, const GridFrame& frame,
                 int n, int m) {
  const auto [minX, maxX] = std::ranges::minmax(x);
  const auto [minY, maxY] = std::ranges::minmax(y);
  return {.firstI = std::max({cellIndex(minY, frame.dy), frame.firstOffset, 1}),
          .firstJ = std::max({cellIndex(minX, frame.dx), frame.secondOffset, 1}),
          .lastI = std::min(cellIndex(maxY, frame.dy), n - frame.firstOffset),
          .lastJ = std::min(cellIndex(maxX, frame.dx), m - frame.secondOffset)};
}

// Marks of the cells of a range, for the two passes of the fill: which cells have an odd number of
// crossings between them and the cell before in their row, and from that which cells are inside.
class Marks {
 public:
  Marks(std::span<std::uint8_t> cells, const Area& range)
      : cells_(cells),
        range_(range),
        rows_(static_cast<std::size_t>(range.lastI - range.firstI) + 1) {}

  void addEdge(double startX, double startY, double endX, double endY, double dx, double dy) {
    const std::int32_t startRow = cellIndex(startY, dy);
    const std::int32_t endRow = cellIndex(endY, dy);
    // From one row below: a vertex a rounding error below a centre line may count as a row too high
    // for one of its edges, and a line that misses a crossing is filled to its end.
    const std::int32_t firstRow = std::max(std::min(startRow, endRow) - 1, range_.firstI);
    const std::int32_t lastRow = std::min(std::max(startRow, endRow), range_.lastI);
    const double low = std::min(startY, endY);
    const double high = std::max(startY, endY);
    for (std::int32_t row = firstRow; row <= lastRow; ++row) {
      const double y = row * dy;
      // The lower end does not belong to the edge, so that a chain of edges crosses a line that
      // runs through one of its vertices once, or not at all where it turns back.
      if (!(low < y && y <= high)) continue;
      // Multiplied before it is divided: exact wherever the crossing is, on vertical edges too.
      const double x = startX + (y - startY) * (endX - startX) / (endY - startY);
      addCrossing(row, cellIndex(x, dx));
    }
  }

  // Each column adds its crossings to the state that the column before it has left behind.
  void fill() {
    for (std::size_t i = rows_; i < cells_.size(); ++i)
      cells_[i] = static_cast<std::uint8_t>(cells_[i] ^ cells_[i - rows_]);
  }

 private:
  void addCrossing(std::int32_t row, std::int32_t column) {
    if (column > range_.lastJ) return;
    const auto i = static_cast<std::size_t>(row - range_.firstI);
    const auto j = static_cast<std::size_t>(std::max(column, range_.firstJ) - range_.firstJ);
    cells_[j * rows_ + i] ^= 1;
  }

  std::span<std::uint8_t> cells_;
  Area range_;
  std::size_t rows_;
};

// Fewer cells than 2^62, which a vector may have where there is the memory.
bool makeBlank(std::vector<std::uint8_t>& cells, const Area& range) {
  const std::int64_t rows = std::int64_t{range.lastI} - range.firstI + 1;
  const std::int64_t columns = std::int64_t{range.lastJ} - range.firstJ + 1;
  try {
    cells.assign(static_cast<std::size_t>(rows * columns), 0);
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

}  // namespace

Outcome<InsideCells> RegionFill::find(std::span<double> x, std::span<double> y,
                                      std::span<const std::int32_t> polygonEnds,
                                      const GridFrame& frame, int n, int m) {
  shiftToField(x, frame.secondOffset, frame.dx);
  shiftToField(y, frame.firstOffset, frame.dy);
  const Area range = searchRange(x, y, frame, n, m);
  if (range.lastI < range.firstI || range.lastJ < range.firstJ) return InsideCells{};
  if (!makeBlank(cells_, range))
    return Report{.line1 = "ERROR - Could not allocate memory (RAM) for Inside Region == Method B.",
                  .blankLines = 0};

  Marks marks(cells_, range);
  const auto addPolygon = [&](std::size_t first, std::size_t end) {
    for (std::size_t i = first; i + 1 < end; ++i)
      marks.addEdge(x[i], y[i], x[i + 1], y[i + 1], frame.dx, frame.dy);
  };
  if (!forEachPolygon(x.size(), polygonEnds, addPolygon))
    return Report{.line1 =
                      "Invalid number of polygons in region sent to grid_inside_polygon routine "
                      "[1] - contact " +
                      std::string(kSupportAddress)};
  marks.fill();
  return InsideCells{range, cells_};
}

}  // namespace nivaro
