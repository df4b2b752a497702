// Numbers in columns, as fixed-format output writes them: right-aligned, correctly rounded from the
// exact binary value (a tie goes to the even digit), asterisks where the number does not fit. The
// C locale plays no part.
#pragma once

#include <cstdint>
#include <string>

namespace nivaro {

// `value` with `decimals` decimals in `width` columns.
// - Zero decimals end in a point.
// - The leading zero of a number below 1 is dropped where only that makes it fit: 0.4 in 4 columns
//   with 3 decimals is ".400".
// - A negative value that rounds to zero keeps its sign, and so does a negative zero.
// - Not-a-number is "NaN". Infinity is "Infinity" where that fits, else "Inf", with a minus sign
//   when negative; like any positive number it has no plus sign.
std::string fixedField(double value, int width, int decimals);

// `value` in `width` columns, padded with zeros to at least `minDigits` digits.
std::string integerField(std::int64_t value, int width, int minDigits = 1);

}  // namespace nivaro
