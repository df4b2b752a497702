#include "text/counting.hpp"

#include <algorithm>
#include <iterator>

#include "platform/letters.hpp"
#include "platform/list_input.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

constexpr std::int32_t kDaysBeforeMonth[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

std::string_view separatorText(std::string_view separator) {
  return trimmed(separator).empty() ? std::string_view(" ") : trimmed(separator);
}

bool belongsToNumber(char c) {
  return isDigit(c) || std::string_view(".+-eE").find(c) != std::string_view::npos;
}

}  // namespace

std::int32_t numberOfSubstrings(std::string& text, std::string_view separator) {
  if (blank(text)) return 0;

  const std::string_view mark = separatorText(separator);
  const std::string_view pieces = trimmed(text);
  std::int32_t count = 1;
  for (std::size_t at = pieces.find(mark); at != std::string_view::npos;
       at = pieces.find(mark, at + mark.size())) {
    ++count;
  }
  return count;
}

std::string substring(std::string_view text, std::string_view separator, std::int32_t index) {
  if (index < 1) return {};

  const std::string_view mark = separatorText(separator);
  std::string_view rest = trimmed(text);
  for (std::int32_t skipped = 1; skipped < index; ++skipped) {
    const std::size_t end = rest.find(mark);
    if (end == std::string_view::npos) return {};
    rest.remove_prefix(end + mark.size());
  }
  return trimF(rest.substr(0, rest.find(mark)));
}

std::int32_t numberOfNumbers(std::string_view line) {
  std::int32_t count = 0;
  bool inNumber = false;
  bool behindComma = false;  // a comma was met and no number since
  for (const char c : trimmed(line)) {
    if (c == '!' || c == '#') break;
    if (belongsToNumber(c)) {
      if (!inNumber) ++count;
      inNumber = true;
      behindComma = false;
      continue;
    }

    inNumber = false;
    if (c == ',') {
      if (behindComma) ++count;
      behindComma = true;
    } else if (c != ' ' && c != '\t') {
      return -count;
    }
  }
  return count;
}

std::int32_t numberOfDays(std::string_view date) {
  const std::string digits = padTo(date, 8);
  const auto read = [&digits](std::size_t from, std::size_t length, std::int32_t& value) {
    return readListItem(std::string_view(digits).substr(from, length), value) == ReadStatus::Ok;
  };
  std::int32_t year = 0;
  std::int32_t month = 0;
  std::int32_t day = 0;
  if (!read(0, 4, year) || !read(4, 2, month) || !read(6, 2, day)) return -1;
  if (month < 1 || month > std::ssize(kDaysBeforeMonth)) return -1;

  if (month == 2) day = std::min(day, 28);
  return year * 365 + kDaysBeforeMonth[month - 1] + day - 730000;
}

}  // namespace nivaro
