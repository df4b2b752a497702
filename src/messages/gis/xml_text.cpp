#include "messages/gis/xml_text.hpp"

#include <cstddef>

namespace nivaro::gis {

namespace {

// How the UTF-8 characters that XML allows begin: not those written longer than need be, nor halves
// of pairs, nor the last block of the first plane, which ends in codes that are no characters.
struct Utf8Row {
  unsigned firstLow, firstHigh;    // the first byte
  unsigned secondLow, secondHigh;  // the second; those behind it are 80 to BF
  std::size_t length;
};
constexpr Utf8Row kUtf8[] = {
    {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3}, {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEE, 0x80, 0xBF, 3}, {0xEF, 0xEF, 0x80, 0xBE, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4}};

// The length of the UTF-8 character that the text begins with; 0 when it begins with none.
std::size_t utf8Length(std::string_view text) {
  const auto isWithin = [&](std::size_t i, unsigned low, unsigned high) {
    const auto byte = static_cast<unsigned char>(text[i]);
    return low <= byte && byte <= high;
  };
  if (isWithin(0, 0x00, 0x7F)) return 1;
  for (const Utf8Row& row : kUtf8) {
    if (!isWithin(0, row.firstLow, row.firstHigh)) continue;
    if (row.length > text.size() || !isWithin(1, row.secondLow, row.secondHigh)) return 0;
    for (std::size_t i = 2; i < row.length; ++i)
      if (!isWithin(i, 0x80, 0xBF)) return 0;
    return row.length;
  }
  return 0;
}

std::string xmlCharacter(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&apos;";
    default:
      return {static_cast<unsigned char>(c) < 0x20 ? ' ' : c};
  }
}

}  // namespace

std::string xmlText(std::string_view text) {
  std::string xml;
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    if (length == 0) {
      xml += "&#" + std::to_string(static_cast<unsigned char>(text.front())) + ";";
    } else if (length == 1) {
      xml += xmlCharacter(text.front());
    } else {
      xml += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return xml;
}

}  // namespace nivaro::gis
