#include "text/value_list.hpp"

#include <algorithm>

#include "platform/fixed_field.hpp"
#include "platform/letters.hpp"
#include "platform/list_input.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

struct ValueList {
  std::string_view text;
  bool isBehindKey = false;
};

// Of the item at the start of the list: up to the first comma outside quotes. Either quote
// character closes what either opened; a doubled one inside closes and opens again.
std::size_t itemLength(std::string_view list) {
  bool quoted = false;
  std::size_t at = 0;
  for (; at < list.size() && (quoted || list[at] != ','); ++at)
    if (isQuote(list[at])) quoted = !quoted;
  return at;
}

std::string plain(std::string_view item) {
  return trimF(removeQuotes(item));
}

std::string itemOf(std::string_view list, std::int32_t column) {
  for (std::int32_t skipped = 1; skipped < column; ++skipped) {
    const std::size_t length = itemLength(list);
    if (length == list.size()) return {};
    list.remove_prefix(length + 1);
  }
  return plain(list.substr(0, itemLength(list)));
}

// Empty where there is neither the key nor a column.
Outcome<ValueList> valueList(std::string_view line, std::string_view loweredLine,
                             std::string_view key, std::int32_t column) {
  const std::size_t found = loweredLine.find(lowerCase(key));
  if (found == std::string_view::npos) {
    return ValueList{column < 1 ? std::string_view() : line, false};
  }

  const std::string_view behindKey = line.substr(std::min(found + trimmedLength(key), line.size()));
  const std::size_t equals = behindKey.find('=');
  if (equals == std::string_view::npos) {
    Report report;
    report.line1 =
        "ERROR 0203 - No \"=\" sign found after keyword \"" + std::string(trimmed(key)) + "\".";
    return report;
  }
  return ValueList{behindKey.substr(equals + 1), true};
}

Report notConverted(std::string_view item, std::int32_t column, std::string_view intoWhat,
                    std::string_view key, std::string_view line) {
  Report report;
  report.line1.append("ERROR 0010 - Could not convert \"")
      .append(item)
      .append("\" in column")
      .append(integerField(column, 3))
      .append(intoWhat)
      .append(trimmed(key))
      .append(" field.");
  report.detail1.append("Line = ").append(trimmed(line));
  return report;
}

template <typename Number>
Outcome<Number> extractNumber(std::string_view line, std::string_view loweredLine,
                              std::string_view key, std::int32_t column, Number defaultValue,
                              std::string_view intoWhat) {
  const Outcome<std::string> item = extractString(line, loweredLine, key, column);
  if (!item) return item.report();
  if (item.value().empty()) return defaultValue;

  Number number = defaultValue;
  if (readListItem(item.value(), number) != ReadStatus::Ok) {
    return notConverted(item.value(), column, intoWhat, key, line);
  }
  return number;
}

}  // namespace

Outcome<std::int32_t> extractInteger(std::string_view line, std::string_view loweredLine,
                                     std::string_view key, std::int32_t column,
                                     std::int32_t defaultValue) {
  return extractNumber(line, loweredLine, key, column, defaultValue,
                       " in line below to an integer value for the ");
}

Outcome<double> extractReal(std::string_view line, std::string_view loweredLine,
                            std::string_view key, std::int32_t column, double defaultValue) {
  return extractNumber(line, loweredLine, key, column, defaultValue,
                       " in line below to a real value for the ");
}

Outcome<std::string> extractString(std::string_view line, std::string_view loweredLine,
                                   std::string_view key, std::int32_t column) {
  const Outcome<ValueList> list = valueList(line, loweredLine, key, column);
  if (!list) return list.report();
  return itemOf(list.value().text, column);
}

Outcome<std::string> extractStringRem(std::string_view line, std::string_view loweredLine,
                                      std::string_view key, std::int32_t column) {
  const Outcome<ValueList> list = valueList(line, loweredLine, key, column);
  if (!list) return list.report();
  const auto& [text, isBehindKey] = list.value();
  return isBehindKey ? plain(text) : itemOf(text, column);
}

bool checkReal(std::string_view text, double& value) {
  return readListItem(text, value) == ReadStatus::Ok;
}

bool checkInt4(std::string_view text, std::int32_t& value) {
  return readListItem(text, value) == ReadStatus::Ok;
}

}  // namespace nivaro
