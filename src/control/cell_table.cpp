#include "control/cell_table.hpp"

#include <cmath>
#include <limits>

#include "platform/list_input.hpp"
#include "platform/plain_number.hpp"

namespace nivaro {

namespace {

bool readPlainRow(std::string_view text, CellRow& row) {
  const char* const end = text.data() + text.size();
  const char* at = readPlainNumber(text.data(), end, row.first);
  if (at != nullptr) at = readPlainNumber(at, end, row.second);
  if (at != nullptr) at = readPlainNumber(at, end, row.value);
  return at != nullptr && std::isfinite(row.value);
}

}  // namespace

bool readCellRow(std::string_view text, CellRow& row) {
  if (readPlainRow(text, row)) return true;

  // The spellings that are not so ordinary. An empty item leaves its variable as it is.
  constexpr std::int32_t kEmpty = std::numeric_limits<std::int32_t>::min();
  row = {.first = kEmpty, .second = kEmpty, .value = std::numeric_limits<double>::quiet_NaN()};
  ListInput items(text);
  return items.readAll(row.first, row.second, row.value) == ReadStatus::Ok && row.first != kEmpty &&
         row.second != kEmpty && std::isfinite(row.value);
}

}  // namespace nivaro
