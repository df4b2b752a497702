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
  void bytes(std::span<const std::uint8_t> bytes) {
    for (std::span rest = std::as_bytes(bytes); !rest.empty();) {
      const std::span part = rest.first(std::min(rest.size(), room(1)));
      std::ranges::copy(part, block_.data() + used_);
      used_ += part.size();
      rest = rest.subspan(part.size());
    }
  }

  // The reals valueAt(0) to valueAt(count - 1).
  template <typename ValueAt>
  void reals(std::size_t count, ValueAt valueAt) {
    for (std::size_t first = 0; first < count;) {
      const std::size_t end = first + std::min(count - first, room(sizeof(float)) / sizeof(float));
      std::byte* at = block_.data() + used_;
      used_ += (end - first) * sizeof(float);
      for (; first < end; ++first)
        at = std::ranges::copy(encoded(valueAt(first), ByteOrder::Little), at).out;
    }
  }

 private:
  template <typename Number>
  void put(Number value) {
    room(sizeof value);
    std::ranges::copy(encoded(value, ByteOrder::Little), block_.data() + used_);
    used_ += sizeof value;
  }

  // How many bytes there is room for: at least `least`.
  std::size_t room(std::size_t least) {
    if (used_ + least > block_.size()) pass();
    return block_.size() - used_;
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
