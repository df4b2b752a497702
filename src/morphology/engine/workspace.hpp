// Working memory of a step: strips of lines, not grids, kept between calls.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "morphology/engine/kernel.hpp"
#include "morphology/engine/strip.hpp"

namespace nivaro {

class StepWorkspace {
 public:
  // Tests force a kind of processor; it must be supported.
  explicit StepWorkspace(Processor processor = bestProcessor()) : processor_(processor) {}

  Processor processor() const { return processor_; }

  // Arrays for strips of `lines` lines, `positions` cells long, valid until the next call. Where grains
  // are uniform both cells of a side see the same transport, and share an array.
  StripArrays strip(const StepData& step, std::ptrdiff_t positions, std::ptrdiff_t lines);

  // The map of the blocks of an area, to be filled.
  BlockMap blockMap(std::ptrdiff_t rows, std::ptrdiff_t cells);

  UniformValues& uniformValues() { return uniform_; }

 private:
  Processor processor_;
  std::vector<double> reals_;
  std::vector<std::int64_t> words_;
  std::vector<unsigned char> descends_;
  std::vector<unsigned char> pieces_;
  std::unique_ptr<PieceMemory> piece_;
  std::vector<unsigned char> blocks_;
  UniformValues uniform_ = {};
};

}  // namespace nivaro
