// The numbers that make up almost all of a layer's text, read as fast as they can be parsed.
#pragma once

#include <span>
#include <string_view>

namespace nivaro {

// As many reals as `values` holds from the start of the text, by the rules of list-directed input;
// what follows them is not looked at. False when one is missing, empty or not a finite number.
bool readReals(std::string_view text, std::span<double> values);

}  // namespace nivaro
