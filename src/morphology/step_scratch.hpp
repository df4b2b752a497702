// Working memory of a step: strips of lines, not grids, kept between calls.
#pragma once

#include <cstddef>
#include <vector>

#include "morphology/step_kernel.hpp"
#include "morphology/strip.hpp"

namespace nivaro {

class StepScratch {
 public:
  // Tests force a kind of processor; it must be supported.
  explicit StepScratch(Processor processor = bestProcessor()) : processor_(processor) {}

  Processor processor() const { return processor_; }

  // Arrays for strips of lines up to `positions` cells long, valid until the next call.
  StripArrays strip(std::ptrdiff_t positions, bool centred);

 private:
  Processor processor_;
  std::vector<double> reals_;
  std::vector<std::int64_t> words_;
  std::vector<unsigned char> rows_;
};

}  // namespace nivaro
