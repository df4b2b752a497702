// The six parameters that vary from cell to cell, as the commands of the control file name them.
#pragma once

#include <string_view>

#include "morphology/fields.hpp"

namespace nivaro {

// All cells to the values that hold where no command says otherwise.
void setDefaults(const SedimentFields& fields);

struct SpatialTarget {
  std::string_view keyword;            // in a command
  std::string_view name;               // in messages
  Grid<double> SedimentFields::*real;  // null for the bed activity code, the one integer field
};

// The target that a command names; none when it names none or is not about morphology.
const SpatialTarget* findSpatialTarget(std::string_view command);

}  // namespace nivaro
