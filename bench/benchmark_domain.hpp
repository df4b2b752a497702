// A domain for timing: dunes under mixed flow, 85 % of it wet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "morphology/fields.hpp"

namespace nivaro::bench {

// Where the bed may move: everywhere, or in one cell of twenty, which are a winding band along the first
// index or a square in the middle.
enum class ActiveCells { All, Band, Square };

struct Shape {
  int size = 100;             // cells along either index
  bool variedGrains = false;  // a size of its own in every cell
  bool velocityCentred = false;
  ActiveCells active = ActiveCells::All;
};

class Domain {
 public:
  explicit Domain(const Shape& shape);

  StepInput input();
  Area area() const { return {2, 2, n_ - 1, n_ - 1}; }
  std::size_t activeCells() const;  // active and wet

 private:
  using Reals = std::vector<double>;
  using Integers = std::vector<std::int32_t>;

  void fillCell(const Shape& shape, int i, int j, std::size_t k);
  bool isActive(ActiveCells active, int i, int j) const;

  int n_;
  Reals level_, v2_, v1_, zpts_, zc_, z2_, z1_;
  Reals previous_, applied_, change_, concentration_, adaptation_, spare_;
  Reals d50_, d90_, inSituVoids_, depositionVoids_, bedLimit_;
  Integers wet_, flow_, code_;
  MorphologyParameters parameters_;
};

}  // namespace nivaro::bench
