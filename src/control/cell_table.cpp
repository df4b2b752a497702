#include "control/cell_table.hpp"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "platform/list_input.hpp"

namespace nivaro {

namespace {

constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

// A number in its ordinary spelling, and the blanks and the comma behind it. Null otherwise.
template <typename Number>
const char* readPlain(const char* at, const char* end, Number& number) {
  while (at != end && isBlank(*at)) ++at;
  const auto [next, error] = std::from_chars(at, end, number);
  if (error != std::errc{}) return nullptr;
  if (next != end && !isBlank(*next) && *next != ',') return nullptr;
  at = next;
  while (at != end && isBlank(*at)) ++at;
  return at != end && *at == ',' ? at + 1 : at;
}

bool readPlainRow(std::string_view text, CellRow& row) {
  const char* const end = text.data() + text.size();
  const char* at = readPlain(text.data(), end, row.first);
  if (at != nullptr) at = readPlain(at, end, row.second);
  if (at != nullptr) at = readPlain(at, end, row.value);
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
