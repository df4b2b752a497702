// Letters, digits and letter case: the 26 letters only, whatever the locale of the host says. Other
// characters, those of national alphabets included, have no case here.
#pragma once

#include <cstddef>
#include <string_view>

namespace nivaro {

constexpr char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
constexpr bool isLetter(char c) {
  return upper(c) >= 'A' && upper(c) <= 'Z';
}
constexpr bool isQuote(char c) {
  return c == '"' || c == '\'';
}

// Position of the first `wanted` at or behind `from`, letter case ignored; npos when there is none.
// An empty text is found at once. Allocates nothing: keywords are looked for on every line.
std::size_t findIgnoringCase(std::string_view text, std::string_view wanted, std::size_t from = 0);

}  // namespace nivaro
