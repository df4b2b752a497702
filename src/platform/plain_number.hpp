// Numbers in their ordinary spelling, which are almost all of the numbers in large files: read as fast as
// they can be parsed. list_input.hpp knows the other spellings.
#pragma once

#include <charconv>
#include <system_error>

namespace nivaro {

// The number between blanks or tabs and the comma behind it. Returns where the next one begins; null for
// what is spelled in another way or is no number.
template <typename Number>
const char* readPlainNumber(const char* at, const char* end, Number& number) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  const auto skipBlanks = [&] {
    while (at != end && isBlank(*at)) ++at;
  };
  skipBlanks();
  const auto [next, error] = std::from_chars(at, end, number);
  if (error != std::errc{}) return nullptr;
  if (next != end && !isBlank(*next) && *next != ',') return nullptr;
  at = next;
  skipBlanks();
  return at != end && *at == ',' ? at + 1 : at;
}

}  // namespace nivaro
