// The options of the control file that hold for a whole domain: one row for each keyword.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "morphology/parameters.hpp"

namespace nivaro {

enum class OptionKind {
  Method,        // the one method that there is
  NumberOrAuto,  // a number, or AUTO, which leaves the number as it was
  OnOff,
  Number,
};

struct Option {
  std::string_view keyword;
  OptionKind kind;
  double MorphologyParameters::*number = nullptr;
  bool MorphologyParameters::*flag = nullptr;  // method chosen, value automatic, or switched on
  std::string_view method{};
  int decimals = 0;         // of the number on the console, in 6 columns
  std::string_view unit{};  // behind the number on the console
};

// The option that a command sets: the first whose keyword the command contains, in the order in
// which the keywords are tested; null when there is none.
const Option* findOption(std::string_view command);

// Sets the option; returns the line for the console, or nothing when the value does not suit.
std::optional<std::string> setOption(const Option& option, std::string_view value,
                                     MorphologyParameters& parameters);

}  // namespace nivaro
