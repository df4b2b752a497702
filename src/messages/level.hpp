// The levels of a message: the words that line 1 begins with, and what goes with each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "messages/record.hpp"

namespace nivaro {

using Counter = std::int32_t MessageRecord::*;

struct MessageLevel {
  std::string_view word;
  std::int32_t level;
  std::size_t numberColumn;  // where the 6 columns of the number begin in line 1; 0: no number
  Counter count;             // null: not counted
  bool countedWithoutLocation;
  Counter locatedCount;
  std::string_view font;  // MapInfo font clause of the label
  bool secondaryLayer;
};

// The level of line 1, by its first characters, letter case included.
const MessageLevel& levelOf(std::string_view line1);

}  // namespace nivaro
