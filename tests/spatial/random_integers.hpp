// Small integers in a row that is the same on every machine: coordinates on an integer grid, where
// ties abound and every rule can be checked in exact arithmetic.
#pragma once

#include <cstdint>
#include <random>

namespace nivaro::test {

class RandomIntegers {
 public:
  explicit RandomIntegers(std::uint32_t seed) : generator_(seed) {}

  int between(int low, int high) {
    return low + static_cast<int>(generator_() % static_cast<std::uint32_t>(high - low + 1));
  }

 private:
  std::mt19937 generator_;
};

}  // namespace nivaro::test
