// Pieces of a text, numbers in a line, days of a calendar: what can be counted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nivaro {

// How many pieces the separator makes of the text; takes the tabs out of `text` itself. A blank
// text has none. Trailing blanks of the separator do not count; a blank one is a single blank.
std::int32_t numberOfSubstrings(std::string& text, std::string_view separator);

// The piece of this index, counted from 1, without blanks around; empty when there are fewer.
std::string substring(std::string_view text, std::string_view separator, std::int32_t index);

// How many numbers a line holds before its comment, empty ones between two commas included. A
// character that belongs to no number ends the count, which is then returned negative.
std::int32_t numberOfNumbers(std::string_view line);

// Number of the day YYYYMMDD in a calendar of 365-day years: 1 is the first of January 2000, the
// 29th of February is the 28th. -1 when the date cannot be read or its month is none.
std::int32_t numberOfDays(std::string_view date);

}  // namespace nivaro
