// Numbers and texts gathered as the bytes of a header or record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/byte_order.hpp"

namespace nivaro::gis {

class ByteBuffer {
 public:
  ByteBuffer& big(std::int32_t value) { return put(value, ByteOrder::Big); }

  template <typename Number>
  ByteBuffer& little(Number value) {
    return put(value, ByteOrder::Little);
  }

  ByteBuffer& byte(int value) { return little(static_cast<std::uint8_t>(value)); }

  ByteBuffer& text(std::string_view text) {
    for (const char c : text) bytes_.push_back(static_cast<std::byte>(c));
    return *this;
  }

  ByteBuffer& zeros(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) bytes_.push_back(std::byte{0});
    return *this;
  }

  std::span<const std::byte> bytes() const { return bytes_; }

 private:
  template <typename Number>
  ByteBuffer& put(Number value, ByteOrder order) {
    for (const std::byte b : encoded(value, order)) bytes_.push_back(b);
    return *this;
  }

  std::vector<std::byte> bytes_;
};

}  // namespace nivaro::gis
