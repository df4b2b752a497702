#include "text/csv.hpp"

#include <string>

#include "platform/list_input.hpp"
#include "text/keyword.hpp"
#include "text/transform.hpp"

namespace nivaro {
namespace {

constexpr std::size_t kHeaderWidth = 100000;

std::string_view firstField(std::string_view line) {
  return line.substr(0, line.find(','));
}

}  // namespace

bool csvColumn(std::string_view header, std::string_view name, std::int32_t& column) {
  const std::string wanted = asameKey(name);
  std::string_view rest = header.substr(0, kHeaderWidth);
  for (std::int32_t position = 1;; ++position) {
    const std::string_view field = firstField(rest);
    if (asameKey(field) == wanted) {
      column = position;
      return true;
    }
    if (field.size() == rest.size()) return false;
    rest.remove_prefix(field.size() + 1);
  }
}

std::int32_t csvValue(std::string_view line, std::int32_t column, double& value) {
  if (column < 1) return -1;

  std::string_view rest = line;
  for (std::int32_t position = 1; position < column; ++position) {
    const std::size_t length = firstField(rest).size();
    if (length == rest.size()) return -1;
    rest.remove_prefix(length + 1);
  }

  const std::string number = removeQuotes(firstField(rest));
  double read = value;
  const ReadStatus status = readListItem(number, read);
  if (status == ReadStatus::End) return -1;
  if (status == ReadStatus::Error) return 1;
  value = read;
  return 0;
}

}  // namespace nivaro
