// Numbers as short texts for echo lines, labels and messages: at most 20 characters, without blanks
// around. A number that does not fit 20 columns is a row of asterisks.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nivaro {

// As many decimals as the size of the value deserves, trailing zeros taken off; the decimal point
// stays ("0.25", "3."). `areal8` is the same with about ten significant digits instead of four.
std::string areal(double value);
std::string areal8(double value);

// A fixed number of decimals, trailing zeros kept; none leaves the decimal point.
std::string areald(double value, int decimals);

// As `areald`; a value of 0 or more is filled with zeros on the left to at least `width`
// characters.
std::string arealdPrec0(double value, int decimals, int width);

std::string ainteger(std::int64_t value);

// A value of 0 or more is filled with zeros on the left to at least `digits` digits (20 at most).
std::string aintegerPrec0(std::int64_t value, int digits);

// A time in hours in the format of this name: "DECIMAL" (two decimals or, for large values, fewer),
// "HHHH:MM" or "HHHH:MM:SS". Minutes and seconds are rounded to the nearest, hours are not padded,
// and a negative time has its sign in front. Empty for any other format.
std::string hoursText(double hours, std::string_view format);

}  // namespace nivaro
