// Rows of the tables that Read MID reads: two cell indices and a value.
#pragma once

#include <cstdint>
#include <string_view>

namespace nivaro {

struct CellRow {
  std::int32_t first = 0;  // indices as the table counts them
  std::int32_t second = 0;
  double value = 0.0;
};

// By the rules of list-directed input; what follows the value is not looked at. False when an item
// is missing, empty or not a (finite) number, or an index not an integer.
bool readCellRow(std::string_view text, CellRow& row);

}  // namespace nivaro
