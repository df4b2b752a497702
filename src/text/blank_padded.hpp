// Texts as the host keeps them: in buffers of fixed length, filled with blanks. Trailing blanks
// never carry meaning, so a text and its padded form are the same text. Only the blank counts: a
// tab does not.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nivaro {

// Length without trailing blanks.
constexpr std::size_t trimmedLength(std::string_view text) {
  return text.find_last_not_of(' ') + 1;  // none found is the largest position; adding 1 gives 0
}

// The text without its trailing blanks.
constexpr std::string_view trimmed(std::string_view text) {
  return text.substr(0, trimmedLength(text));
}

// The text without its leading blanks.
constexpr std::string_view leftTrimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string_view() : text.substr(first);
}

// Without blanks at either end.
constexpr std::string_view stripped(std::string_view text) {
  return leftTrimmed(trimmed(text));
}

// The text in a buffer of `width` characters: cut, or filled with blanks.
inline std::string padTo(std::string_view text, std::size_t width) {
  std::string padded(text.substr(0, width));
  padded.resize(width, ' ');
  return padded;
}

}  // namespace nivaro
