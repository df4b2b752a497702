#include "output/flag_strip.hpp"

#include <algorithm>

namespace nivaro {

namespace {

constexpr std::uint8_t kSkipped = 2;
constexpr std::size_t kCacheLine = 64;

std::size_t size(int count) {
  return static_cast<std::size_t>(std::max(count, 0));
}

// An odd number of cache lines, so that the lines of a block's columns do not drive each other out.
std::size_t stepOf(std::size_t rows) {
  return ((rows / kCacheLine + 1) | 1) * kCacheLine;
}

// Without branches, so that many cells are done at once.
template <typename IsDeep>
void flagColumn(std::uint8_t* column, int rows, const std::int32_t* code, std::int32_t skippedCode,
                const Logical* active, IsDeep isDeep) {
  for (int r = 0; r < rows; ++r) {
    const int flag = int{isTrue(active[r])} & int{isDeep(r)};
    const int skipped = code[r] == skippedCode ? kSkipped : 0;
    column[r] = static_cast<std::uint8_t>(flag | skipped);
  }
}

}  // namespace

FlagStrip::FlagStrip(const CellFlags& flags, double depthThreshold, const Area& range)
    : flags_(flags),
      depthThreshold_(depthThreshold),
      range_(range),
      width_(size(range.lastJ - range.firstJ + 1)) {}

void FlagStrip::gather(int firstI) {
  rows_ = std::min(kRows, range_.lastI - firstI + 1);
  columnStep_ = stepOf(size(rows_));
  block_.resize(columnStep_ * kColumns);
  cells_.resize(size(rows_) * width_);
  for (int firstJ = range_.firstJ; firstJ <= range_.lastJ; firstJ += kColumns) {
    const int columns = std::min(kColumns, range_.lastJ - firstJ + 1);
    for (int c = 0; c < columns; ++c)
      gatherColumn(firstI, firstJ + c, &block_[size(c) * columnStep_]);
    turn(firstJ - range_.firstJ, columns);
  }
}

void FlagStrip::gatherColumn(int firstI, int j, std::uint8_t* column) const {
  const std::int32_t* const code = &flags_.code(firstI, j);
  const Logical* const active = &flags_.active(firstI, j);
  if (!(depthThreshold_ > 0.0)) {
    flagColumn(column, rows_, code, flags_.skippedCode, active, [](int) { return true; });
    return;
  }
  const double* const term1 = &flags_.depthTerm1(firstI, j);
  const double* const term2 = &flags_.depthTerm2(firstI, j);
  flagColumn(column, rows_, code, flags_.skippedCode, active,
             [=, threshold = depthThreshold_](int r) { return term1[r] + term2[r] > threshold; });
}

void FlagStrip::turn(int firstColumn, int columns) {
  for (int r = 0; r < rows_; ++r) {
    std::uint8_t* const row = &cells_[size(r) * width_ + size(firstColumn)];
    for (int c = 0; c < columns; ++c) row[c] = block_[size(c) * columnStep_ + size(r)];
  }
}

std::span<const std::uint8_t> FlagStrip::row(int number) {
  const std::span<std::uint8_t> row = std::span(cells_).subspan(size(number) * width_, width_);
  const auto end =
      std::remove_if(row.begin(), row.end(), [](std::uint8_t flag) { return flag >= kSkipped; });
  return row.first(static_cast<std::size_t>(end - row.begin()));
}

}  // namespace nivaro
