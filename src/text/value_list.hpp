// Values out of lists: "key = item, item, ...". Commas separate, blanks do not; a quoted item may
// hold commas. The key is looked for in `loweredLine`, the line in lower case, which callers keep
// at hand because they look for many keys in it.
//
// Where the key does not occur, the whole line is the list, or, for a column below 1, there is no
// value. A column below 1 behind a key means the first item.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "text/report.hpp"

namespace nivaro {

// The number in that column; the default when there is no item or a blank one. Reports 0203 (a key
// without "=" behind it) and 0010 (an item that is no such number).
Outcome<std::int32_t> extractInteger(std::string_view line, std::string_view loweredLine,
                                     std::string_view key, std::int32_t column,
                                     std::int32_t defaultValue);
Outcome<double> extractReal(std::string_view line, std::string_view loweredLine,
                            std::string_view key, std::int32_t column, double defaultValue);

// The item without any quotes and without blanks around. Reports 0203.
Outcome<std::string> extractString(std::string_view line, std::string_view loweredLine,
                                   std::string_view key, std::int32_t column);

// The same, but behind a key all that follows its "=", commas included.
Outcome<std::string> extractStringRem(std::string_view line, std::string_view loweredLine,
                                      std::string_view key, std::int32_t column);

// Whether the text starts with such a number, and the number. Blank text has none.
bool checkReal(std::string_view text, double& value);
bool checkInt4(std::string_view text, std::int32_t& value);

}  // namespace nivaro
