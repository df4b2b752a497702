#include "platform/letters.hpp"

#include <algorithm>

namespace nivaro {

std::size_t findIgnoringCase(std::string_view text, std::string_view wanted, std::size_t from) {
  if (from > text.size()) return std::string_view::npos;

  const auto start = text.begin() + static_cast<std::ptrdiff_t>(from);
  const auto found = std::search(start, text.end(), wanted.begin(), wanted.end(),
                                 [](char a, char b) { return upper(a) == upper(b); });
  // The end is a find only for an empty text.
  if (found == text.end() && !wanted.empty()) return std::string_view::npos;
  return static_cast<std::size_t>(found - text.begin());
}

}  // namespace nivaro
