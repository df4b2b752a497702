// The message record that module and host share: the exported data block DMESSAGES.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "nivaro_morphology.h"
#include "platform/logical.hpp"

namespace nivaro {

// The layout is the public header's; here it gets its C++ name and the handling of its texts.
using MessageRecord = nivaro_messages;

// A text field without trailing blanks. Codes of 0, which fill the block at load and which a C host
// writes behind its texts, count as blanks.
template <std::size_t N>
std::string fieldText(const char (&field)[N]) {
  // Fields are long and hold little: what fills them is passed over in strides.
  constexpr std::size_t kStride = 64;
  constexpr std::array<char, kStride> kZeros{};
  constexpr auto kBlanks = [] {
    std::array<char, kStride> blanks{};
    blanks.fill(' ');
    return blanks;
  }();
  std::size_t length = N;
  const auto endsIn = [&](const std::array<char, kStride>& fill) {
    return length >= kStride && std::memcmp(field + length - kStride, fill.data(), kStride) == 0;
  };
  while (endsIn(kBlanks) || endsIn(kZeros)) length -= kStride;

  std::string text(field, length);
  std::replace(text.begin(), text.end(), '\0', ' ');
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

// Sets a text field, cut to its length or padded with blanks.
template <std::size_t N>
void setField(char (&field)[N], std::string_view text) {
  const std::size_t length = text.copy(field, N);
  std::memset(field + length, ' ', N - length);
}

}  // namespace nivaro
