// Numbers as the bytes of a binary file, in the order that the file's format asks for.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

namespace nivaro {

enum class ByteOrder { Little, Big };

template <std::size_t N>
constexpr std::array<std::byte, N> inOrder(std::array<std::byte, N> bytes, ByteOrder order) {
  constexpr ByteOrder native =
      std::endian::native == std::endian::little ? ByteOrder::Little : ByteOrder::Big;
  if (order != native) std::reverse(bytes.begin(), bytes.end());
  return bytes;
}

// The bytes of a 4- or 8-byte integer or real.
template <typename Number>
constexpr std::array<std::byte, sizeof(Number)> encoded(Number value, ByteOrder order) {
  return inOrder(std::bit_cast<std::array<std::byte, sizeof(Number)>>(value), order);
}

template <typename Number>
constexpr Number decoded(const std::array<std::byte, sizeof(Number)>& bytes, ByteOrder order) {
  return std::bit_cast<Number>(inOrder(bytes, order));
}

}  // namespace nivaro
