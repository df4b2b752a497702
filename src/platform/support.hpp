// Where users are sent for help: the one place to change when the addresses do.
#pragma once

#include <string_view>

namespace nivaro {

inline constexpr std::string_view kSupportAddress = "support@nivaro.example";

// The page of a message on the reference site is this address followed by the page's title.
inline constexpr std::string_view kReferenceLinkBase = "https://wiki.nivaro.example/?title=";

}  // namespace nivaro
