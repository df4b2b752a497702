#include "platform/field_writer.hpp"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <optional>

#include "platform/fixed_field.hpp"

namespace nivaro {

namespace {

constexpr std::array<std::uint64_t, 4> kPowersOfTen = {1, 10, 100, 1000};
constexpr int kMostDecimals = 3;
constexpr int kMantissaBits = 52;
constexpr int kMostDigits = 20;

// |value| * 10^decimals, rounded to the nearest integer, ties to even, without any error: 53 bits of
// the value and 10 of the power fit 64. None for numbers too large for that, and for those that are
// no numbers.
std::optional<std::uint64_t> scaled(double value, int decimals) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const std::uint64_t fraction = bits & ((std::uint64_t{1} << kMantissaBits) - 1);
  const int biased = static_cast<int>((bits >> kMantissaBits) & 0x7FF);
  const std::uint64_t mantissa =
      biased == 0 ? fraction : fraction | (std::uint64_t{1} << kMantissaBits);

  // The value is mantissa * 2^-shift.
  const int shift = 1075 - (biased == 0 ? 1 : biased);
  if (shift <= 0) return std::nullopt;
  const std::uint64_t product = mantissa * kPowersOfTen[static_cast<std::size_t>(decimals)];
  if (shift > 63) return 0;  // below one half: the product has 63 bits at most

  const std::uint64_t whole = product >> shift;
  const std::uint64_t rest = product & ((std::uint64_t{1} << shift) - 1);
  const std::uint64_t half = std::uint64_t{1} << (shift - 1);
  const bool up = rest > half || (rest == half && (whole & 1) != 0);
  return whole + (up ? 1 : 0);
}

// The digits of `number` with a point before the last `decimals` of them, written from the end of
// the buffer toward its start; returns the first one.
char* putDecimal(std::uint64_t number, int decimals, bool isNegative, char* end) {
  char* at = end;
  for (int i = 0; i < decimals; ++i, number /= 10) *--at = static_cast<char>('0' + number % 10);
  *--at = '.';
  do *--at = static_cast<char>('0' + number % 10);
  while ((number /= 10) != 0);
  if (isNegative) *--at = '-';
  return at;
}

}  // namespace

void appendFixedField(std::string& text, double value, int width, int decimals) {
  if (decimals >= 1 && decimals <= kMostDecimals && width > 0) {
    if (const auto number = scaled(value, decimals)) {
      std::array<char, kMostDigits + 3> buffer;
      char* const end = buffer.data() + buffer.size();
      const char* const first = putDecimal(*number, decimals, std::signbit(value), end);
      const auto length = static_cast<std::size_t>(end - first);
      const auto columns = static_cast<std::size_t>(width);
      if (length <= columns) {
        text.append(columns - length, ' ').append(first, length);
        return;
      }
    }
  }
  text += fixedField(value, width, decimals);
}

void appendIntegerField(std::string& text, std::int64_t value, int width) {
  std::array<char, kMostDigits> buffer;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  const auto length = static_cast<std::size_t>(end - buffer.data());
  const auto columns = static_cast<std::size_t>(width > 0 ? width : 0);
  if (length > columns)
    text.append(columns, '*');
  else
    text.append(columns - length, ' ').append(buffer.data(), length);
}

void appendInteger(std::string& text, std::int64_t value) {
  std::array<char, kMostDigits> buffer;
  text.append(buffer.data(),
              std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
}

}  // namespace nivaro
