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

// The spellings that are not so ordinary. An empty item leaves its variable as it is.
bool readListRow(std::string_view text, std::int32_t empty, CellRow& row) {
  row = {.first = empty, .second = empty, .value = std::numeric_limits<double>::quiet_NaN()};
  ListInput items(text);
  return items.readAll(row.first, row.second, row.value) == ReadStatus::Ok && row.first != empty &&
         row.second != empty && std::isfinite(row.value);
}

}  // namespace

bool readCellRow(std::string_view text, CellRow& row) {
  // The lowest number might be an index as it stands.
  using Limits = std::numeric_limits<std::int32_t>;
  return readPlainRow(text, row) || readListRow(text, Limits::min(), row) ||
         readListRow(text, Limits::max(), row);
}

}  // namespace nivaro
