// Columns of comma-separated tables, found by their name in the header line. Every comma separates;
// quotes protect nothing.
#pragma once

#include <cstdint>
#include <string_view>

namespace nivaro {

// Whether the header names this column (see `asame`), and its position from 1; `column` stays as it
// was when it does not. Only the first 100000 characters of the header are looked at.
bool csvColumn(std::string_view header, std::string_view name, std::int32_t& column);

// The number in that column; `value` stays as it was where there is none.
// Returns 0 when it was read, -1 when the field is missing or blank, 1 when it is no number.
std::int32_t csvValue(std::string_view line, std::int32_t column, double& value);

}  // namespace nivaro
