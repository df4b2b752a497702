// Numbers as the bytes of a binary file, in the order that the file's format asks for.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

namespace nivaro {

enum class ByteOrder { Little, Big };

// The bytes of a 4- or 8-byte integer or real.
template <typename Number>
constexpr std::array<std::byte, sizeof(Number)> encoded(Number value, ByteOrder order) {
  constexpr ByteOrder native =
      std::endian::native == std::endian::little ? ByteOrder::Little : ByteOrder::Big;
  auto bytes = std::bit_cast<std::array<std::byte, sizeof(Number)>>(value);
  if (order != native) std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

}  // namespace nivaro
