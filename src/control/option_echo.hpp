// The options in force, as control-file lines for the log.
#pragma once

#include <array>
#include <string>

#include "morphology/parameters.hpp"

namespace nivaro {

std::array<std::string, 7> optionEcho(const MorphologyParameters& parameters);

}  // namespace nivaro
