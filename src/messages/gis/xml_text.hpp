// Texts as XML holds them.
#pragma once

#include <string>
#include <string_view>

namespace nivaro::gis {

// Bytes that are not UTF-8 are taken for Latin 1; control characters, which XML has no way to hold,
// become blanks.
std::string xmlText(std::string_view text);

}  // namespace nivaro::gis
