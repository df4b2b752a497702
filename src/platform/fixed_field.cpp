#include "platform/fixed_field.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace nivaro {
namespace {

std::string asterisks(std::size_t columns) {
  return std::string(columns, '*');
}

std::string rightAligned(std::string_view text, std::size_t columns) {
  if (text.size() > columns) return asterisks(columns);
  std::string field(columns - text.size(), ' ');
  return field.append(text);
}

// The whole word where it fits.
std::string infinityField(bool isNegative, std::size_t columns) {
  if (isNegative) return rightAligned(columns >= 9 ? "-Infinity" : "-Inf", columns);
  return rightAligned(columns >= 8 ? "Infinity" : "Inf", columns);
}

// Without the zero before the point, which stands first or behind the sign.
void dropLeadingZero(std::string& text) {
  const std::size_t zero = text.starts_with('-') ? 1 : 0;
  if (text.compare(zero, 2, "0.") == 0) text.erase(zero, 1);
}

}  // namespace

std::string fixedField(double value, int width, int decimals) {
  const auto columns = static_cast<std::size_t>(std::max(width, 0));
  if (std::isnan(value)) return rightAligned("NaN", columns);
  if (std::isinf(value)) return infinityField(value < 0, columns);

  // One character more than the field holds: the leading zero may still be dropped. Text that does
  // not fit even here cannot fit the field, so the size of the number is no concern.
  std::string text(columns + 1, ' ');
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                          std::chars_format::fixed, decimals);
  if (error != std::errc{}) return asterisks(columns);
  text.resize(static_cast<std::size_t>(end - text.data()));

  if (decimals == 0) text += '.';
  if (text.size() > columns && decimals > 0) dropLeadingZero(text);
  return rightAligned(text, columns);
}

std::string integerField(std::int64_t value, int width, int minDigits) {
  std::array<char, 24> buffer;  // the sign and 19 digits at most
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  std::string text(buffer.data(), result.ptr);

  const std::size_t sign = value < 0 ? 1 : 0;
  const auto wanted = static_cast<std::size_t>(std::max(minDigits, 1)) + sign;
  if (text.size() < wanted) text.insert(sign, wanted - text.size(), '0');
  return rightAligned(text, static_cast<std::size_t>(std::max(width, 0)));
}

}  // namespace nivaro
