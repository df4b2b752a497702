// Views of grid arrays that the host owns: n cells along the first index, which varies fastest, by
// m along the second, both counted from 1.
#pragma once

#include <cassert>
#include <cstddef>
#include <limits>
#include <span>

namespace nivaro {

// The second dimension of an array that comes without it: nothing behind what is asked for is read.
inline constexpr int kAnyDimension = std::numeric_limits<int>::max();

// A rectangle of cells, bounds included: the morphology area, or the range written to a file.
struct Area {
  int firstI = 1;
  int firstJ = 1;
  int lastI = 0;
  int lastJ = 0;
};

// A view costs two words and is passed by value. It does not outlive the host's call.
template <typename T>
class Grid {
 public:
  Grid() = default;
  Grid(T* first, int n, int m) : first_(first), n_(n), m_(m) {}

  // A grid that may be written can be handed to a reader.
  operator Grid<const T>() const { return {first_, n_, m_}; }

  T& operator()(int i, int j) const { return first_[index(i, j)]; }

  int n() const { return n_; }
  int m() const { return m_; }

  // All cells in memory order.
  std::span<T> cells() const {
    return {first_, static_cast<std::size_t>(n_) * static_cast<std::size_t>(m_)};
  }

 private:
  // Grids of more than 2^31 cells do not fit the host's 4-byte positions, but products may pass
  // 2^31 before a bound is checked, hence the wide type.
  std::ptrdiff_t index(int i, int j) const {
    assert(i >= 1 && i <= n_ && j >= 1 && j <= m_);
    return (static_cast<std::ptrdiff_t>(j) - 1) * n_ + (i - 1);
  }

  T* first_ = nullptr;
  int n_ = 0;
  int m_ = 0;
};

}  // namespace nivaro
