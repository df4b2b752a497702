// The message record that module and host share: the exported data block DMESSAGES.
#pragma once

#include <cstddef>
#include <cstdint>
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
  std::string text(field, N);
  for (char& c : text)
    if (c == '\0') c = ' ';
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

// Sets a text field, cut to its length or padded with blanks.
template <std::size_t N>
void setField(char (&field)[N], std::string_view text) {
  const std::size_t length = text.copy(field, N);
  for (std::size_t i = length; i < N; ++i) field[i] = ' ';
}

}  // namespace nivaro
