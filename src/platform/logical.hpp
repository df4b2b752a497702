// Logicals as the host passes them: 4-byte integers of which only the lowest bit counts.
#pragma once

#include <cstdint>

namespace nivaro {

using Logical = std::int32_t;

constexpr bool isTrue(Logical value) {
  return (value & 1) != 0;
}
constexpr Logical logical(bool value) {
  return value ? -1 : 0;
}

}  // namespace nivaro
