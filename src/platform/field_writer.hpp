// Numbers in columns appended to a text: the very characters of `fixedField` and `integerField`,
// for files of many millions of them.
#pragma once

#include <cstdint>
#include <string>

namespace nivaro {

// Takes no memory of its own for ordinary numbers of up to three decimals.
void appendFixedField(std::string& text, double value, int width, int decimals);

void appendIntegerField(std::string& text, std::int64_t value, int width);

// With as many digits as it needs.
void appendInteger(std::string& text, std::int64_t value);

}  // namespace nivaro
