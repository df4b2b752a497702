#include "text/number_text.hpp"

#include <algorithm>
#include <cmath>
#include <span>

#include "platform/fixed_field.hpp"
#include "text/blank_padded.hpp"

namespace nivaro {
namespace {

constexpr int kWidth = 20;

// The decimals of values whose size is below a limit; none from the last limit on.
struct DecimalsBelow {
  double limit;
  int decimals;
};

constexpr DecimalsBelow kShort[] = {{0.01, 6}, {0.1, 5}, {1, 4}, {10, 3}, {100, 2}, {1000, 1}};

constexpr DecimalsBelow kLong[] = {{1, 10},  {10, 9},  {100, 8}, {1e3, 7}, {1e4, 6},
                                   {1e5, 5}, {1e6, 4}, {1e7, 3}, {1e8, 2}, {1e9, 1}};

// The limits lie where rounding to the decimals of the row would need a column more.
constexpr DecimalsBelow kHours[] = {{999.995, 2}, {9999.95, 1}};

int decimalsFor(double value, std::span<const DecimalsBelow> rows) {
  for (const auto& [limit, decimals] : rows) {
    if (std::abs(value) < limit) return decimals;
  }
  return 0;
}

// More decimals than columns never fit; bounding them changes no result.
std::string realField(double value, int decimals) {
  return fixedField(value, kWidth, std::clamp(decimals, 0, kWidth));
}

std::string withoutTrailingZeros(double value, std::span<const DecimalsBelow> rows) {
  std::string field = realField(value, decimalsFor(value, rows));
  field.resize(field.find_last_not_of('0') + 1);
  return std::string(leftTrimmed(field));
}

// Blanks become zeros within the last `characters` columns.
std::string zeroFilled(std::string field, int characters) {
  const auto from = kWidth - std::clamp(characters, 0, kWidth);
  std::replace(field.begin() + from, field.end(), ' ', '0');
  return std::string(leftTrimmed(field));
}

std::string twoDigits(double value) {
  return integerField(static_cast<std::int64_t>(value), 2, 2);
}

std::string clockText(double hours, bool withSeconds) {
  if (!std::isfinite(hours)) return areald(hours, 0);

  // Rounded as a whole before it is split, so that no part ever shows 60.
  const double perHour = withSeconds ? 3600.0 : 60.0;
  const double total = std::round(std::abs(hours) * perHour);
  std::string text = areald(std::floor(total / perHour), 0);
  if (text.ends_with('.')) text.pop_back();
  if (hours < 0 && total > 0) text.insert(0, 1, '-');

  const double rest = std::fmod(total, perHour);
  if (!withSeconds) return text + ':' + twoDigits(rest);
  return text + ':' + twoDigits(std::floor(rest / 60.0)) + ':' + twoDigits(std::fmod(rest, 60.0));
}

}  // namespace

std::string areal(double value) {
  return withoutTrailingZeros(value, kShort);
}

std::string areal8(double value) {
  return withoutTrailingZeros(value, kLong);
}

std::string areald(double value, int decimals) {
  return std::string(leftTrimmed(realField(value, decimals)));
}

std::string arealdPrec0(double value, int decimals, int width) {
  return zeroFilled(realField(value, decimals), value >= 0 ? width : 0);
}

std::string ainteger(std::int64_t value) {
  return aintegerPrec0(value, 0);
}

std::string aintegerPrec0(std::int64_t value, int digits) {
  return zeroFilled(integerField(value, kWidth), value >= 0 ? digits : 0);
}

std::string hoursText(double hours, std::string_view format) {
  const std::string_view name = trimmed(format);
  if (name == "DECIMAL") return areald(hours, decimalsFor(hours, kHours));
  if (name == "HHHH:MM") return clockText(hours, false);
  if (name == "HHHH:MM:SS") return clockText(hours, true);
  return {};
}

}  // namespace nivaro
