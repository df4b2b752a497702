// Numbers in columns, as fixed-format output writes them: right-aligned, correctly rounded from the
// exact binary value, asterisks where the number does not fit. Never through the C locale.
#pragma once

#include <cstdint>
#include <string>

namespace nivaro {

// `value` with `decimals` decimals in `width` columns. Zero decimals end in a point. The leading
// zero of a number below 1 is kept when it fits and dropped when only that makes the number fit
// (0.4 in 4 columns with 3 decimals is ".400"). A negative value that rounds to zero keeps its sign.
// Not-a-number is "NaN"; infinity is "Inf", or "Infinity" from 8 columns on, with "-" before a
// negative one ("+" is written where a column is left for it); asterisks where even that is too wide.
std::string fixedField(double value, int width, int decimals);

// `value` in `width` columns, padded with zeros to at least `minDigits` digits.
std::string integerField(std::int64_t value, int width, int minDigits = 1);

}  // namespace nivaro
