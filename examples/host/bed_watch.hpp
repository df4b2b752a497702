// What a modeller should look at on the map: where the bed comes down to its limit, where a step is
// too long for the depth, where the bed changed most. Told to the module's messages layer.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "bed.hpp"
#include "grid_frame.hpp"
#include "module_library.hpp"

namespace host {

// A message with its place in the grid's own coordinates.
struct PlacedMessage {
  Message message;
  double x = 0, y = 0;
};

class BedWatch {
 public:
  // Takes the bed of now as the bed before. `bedLimit` is the module's field of bed limits.
  BedWatch(const GridFrame& grid, const BedArrays& bed, const double* bedLimit);

  // What is new after a step that ended at `hours`; `change` is the module's field of bed changes.
  std::vector<PlacedMessage> afterStep(const BedArrays& bed, const double* change,
                                       const Field<double>& level, double hours);
  // The lowest and the highest change of the bed, where there is any.
  std::vector<PlacedMessage> extremes(const BedArrays& bed, double hours) const;

 private:
  using Places = std::vector<std::pair<int, int>>;
  bool isFarFrom(const Places& places, int i, int j) const;
  PlacedMessage at(int i, int j, Message message) const;

  GridFrame grid_;
  Field<double> bedBefore_;
  Field<double> limit_;
  Field<std::uint8_t> canReachLimit_;  // and has not yet
  Places reachedLimit_, changedMuch_;  // cells that were told about
};

}  // namespace host
