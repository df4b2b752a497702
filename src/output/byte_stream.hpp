// Little-endian numbers gathered into blocks for a unit, so that a grid of values costs a copy and
// not a call for each.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "platform/byte_order.hpp"
#include "platform/unit.hpp"

namespace nivaro {

class ByteStream {
 public:
  explicit ByteStream(Unit& unit) : unit_(unit) {}
  ~ByteStream() { pass(); }
  ByteStream(const ByteStream&) = delete;
  ByteStream& operator=(const ByteStream&) = delete;

  void integer(std::int32_t value) { put(value); }
  void real(float value) { put(value); }
  void flag(bool value) { put(static_cast<std::int8_t>(value ? 1 : 0)); }
  void text(std::string_view text) {
    for (const char c : text) put(c);
  }

 private:
  template <typename Number>
  void put(Number value) {
    if (used_ + sizeof value > block_.size()) pass();
    const auto bytes = encoded(value, ByteOrder::Little);
    std::copy(bytes.begin(), bytes.end(), block_.data() + used_);
    used_ += sizeof value;
  }

  void pass() {
    if (used_ > 0) unit_.writeBytes(std::span(block_).first(used_));
    used_ = 0;
  }

  Unit& unit_;
  std::array<std::byte, 16384> block_;
  std::size_t used_ = 0;
};

}  // namespace nivaro
