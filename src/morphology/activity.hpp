// What a cell takes part in.
#pragma once

#include <cstdint>

#include "morphology/fields.hpp"

namespace nivaro {

// The lowest bit of a bed code lets a cell take part in transport; of negative codes too.
constexpr bool carriesSand(std::int32_t bedCode) {
  return (bedCode & 1) != 0;
}

// A code above 0 lets the bed of a cell change, by whatever cause.
constexpr bool hasMovableBed(std::int32_t bedCode) {
  return bedCode > 0;
}

inline bool isActiveAndWet(const StepInput& in, int i, int j) {
  return carriesSand(in.fields.bedCode(i, j)) && isTrue(in.flow.wet(i, j));
}

// At or below the level to which it may erode.
inline bool isAtBedLimit(const StepInput& in, int i, int j) {
  return -in.bed.zc(i, j) <= in.fields.bedLimit(i, j);
}

}  // namespace nivaro
