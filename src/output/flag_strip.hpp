// The flags of cells on their way to the dataset. The file goes along the second index, the host's
// arrays along the first: a strip of rows is read along the first index, a block of columns after
// the other, and turned into rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/grid.hpp"
#include "platform/logical.hpp"

namespace nivaro {

struct CellFlags {
  double time = 0.0;
  double timeOffset = 0.0;
  std::int32_t skippedCode = 0;  // cells of this code have no flag in the file
  Grid<const std::int32_t> code;
  Grid<const Logical> active;
  Grid<const double> depthTerm1;  // m; a cell is flagged where the two exceed the threshold
  Grid<const double> depthTerm2;
};

class FlagStrip {
 public:
  // Whole columns of most grids: arrays that are read in one stretch come twice as fast as those of
  // which every column is read in pieces.
  static constexpr int kRows = 4096;

  // Of the cells of a range; a threshold that is not above 0 leaves the depth out.
  FlagStrip(const CellFlags& flags, double depthThreshold, const Area& range);

  // Gathers the rows from firstI on: kRows of them or as many as the range has.
  void gather(int firstI);
  int rows() const { return rows_; }

  // The flags of a row counted from 0, skipped cells left out; until the next call.
  std::span<const std::uint8_t> row(int number);

 private:
  // Columns that are turned into rows together.
  static constexpr int kColumns = 64;

  void gatherColumn(int firstI, int j, std::uint8_t* column) const;
  void turn(int firstColumn, int columns);

  const CellFlags& flags_;
  double depthThreshold_;
  Area range_;
  std::size_t width_;
  int rows_ = 0;
  std::size_t columnStep_ = 0;       // from a column of the block to the next
  std::vector<std::uint8_t> block_;  // column by column
  std::vector<std::uint8_t> cells_;  // row by row, skipped cells marked
};

}  // namespace nivaro
