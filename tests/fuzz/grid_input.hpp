// A domain for fuzz targets that fill grids: its size, its frame and its fields in two work arrays.
#pragma once

#include <vector>

#include "fuzz/fuzz_input.hpp"
#include "interface/entry_points.hpp"

namespace nivaro::fuzz {

inline constexpr std::int32_t kDomain = 1;

// Work arrays that end with the last field, so that the address sanitizer sees an element beyond.
struct GridInput {
  std::int32_t n;
  std::int32_t m;
  bool active;
  GridDescription grid;
  std::vector<double> real;
  std::vector<std::int32_t> integer;

  static constexpr double kUntouched = -7.25;

  GridInput(Module& module, std::string_view text) {
    Numbers numbers(text);
    n = numbers.upTo(30);
    m = numbers.upTo(30);
    active = numbers.flag();
    GridFrame& frame = grid.frame;
    frame.firstBound = numbers.integer();
    frame.secondBound = numbers.integer();
    grid.firstRowBound = numbers.integer();
    grid.secondRowBound = numbers.integer();
    grid.firstRowOffset = numbers.integer();
    grid.secondRowOffset = numbers.integer();
    frame.dx = numbers.real();
    frame.dy = numbers.real();
    frame.x0 = numbers.real();
    frame.y0 = numbers.real();
    frame.angle = numbers.real();

    std::int32_t nextReal = 1;
    std::int32_t nextInteger = 1;
    reserveFields(module, {.domain = kDomain, .active = active, .n = n, .m = m}, nextReal,
                  nextInteger);
    real = std::vector<double>(static_cast<std::size_t>(nextReal - 1), kUntouched);
    integer = std::vector<std::int32_t>(static_cast<std::size_t>(nextInteger - 1), -7);
  }

  WorkArrays work() { return {real.data(), integer.data()}; }
  SedimentFields fields(const Module& module) {
    return module.fields.fields(kDomain, work(), n, m);
  }
};

// Every element of a field that was changed lies where `mayBeSet` says.
template <typename T, typename MayBeSet>
void requireUntouchedElsewhere(Grid<T> field, T before, MayBeSet mayBeSet) {
  for (std::int32_t j = 1; j <= field.m(); ++j)
    for (std::int32_t i = 1; i <= field.n(); ++i)
      require(field(i, j) == before || mayBeSet(i, j), "only cells of the grid are set");
}

}  // namespace nivaro::fuzz
