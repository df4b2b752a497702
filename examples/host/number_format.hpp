// Numbers as text, whatever the locale.
#pragma once

#include <array>
#include <charconv>
#include <string>

namespace host {

inline std::string fixed(double value, int decimals) {
  std::array<char, 400> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::fixed, decimals);
  return {buffer.data(), end.ptr};
}

inline std::string significant(double value, int digits) {
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::general, digits);
  return {buffer.data(), end.ptr};
}

}  // namespace host
