// Writing to the screen without harm to the run. Each system has a source of its own.
#pragma once

#include <string_view>

namespace nivaro {

// Writes through the C library's stream, at once. Where nobody reads standard output any more, or
// it is closed or full, the text is lost and nothing else happens.
void writeStandardOutput(std::string_view text);

}  // namespace nivaro
