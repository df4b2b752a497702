#include "platform/byte_order.hpp"

#include <gtest/gtest.h>

#include <cstdint>

namespace nivaro {
namespace {

TEST(ByteOrder, PutsTheHighByteFirstOrLast) {
  constexpr auto bytes = [](auto... values) { return std::array{std::byte(values)...}; };

  EXPECT_EQ(encoded(std::int32_t{9994}, ByteOrder::Big), bytes(0, 0, 0x27, 0x0A));
  EXPECT_EQ(encoded(std::int32_t{9994}, ByteOrder::Little), bytes(0x0A, 0x27, 0, 0));
  // -2 is sign 1, exponent 1024 (0x400), mantissa 0.
  EXPECT_EQ(encoded(-2.0, ByteOrder::Big), bytes(0xC0, 0, 0, 0, 0, 0, 0, 0));
}

}  // namespace
}  // namespace nivaro
