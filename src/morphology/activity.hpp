// What a bed code lets a cell take part in. Its lowest bit, of negative codes too, says whether that is
// transport: the lanes test it (isOdd).
#pragma once

#include <cstdint>

namespace nivaro {

// A code above 0 lets the bed of a cell change, by whatever cause.
constexpr bool hasMovableBed(std::int32_t bedCode) {
  return bedCode > 0;
}

}  // namespace nivaro
