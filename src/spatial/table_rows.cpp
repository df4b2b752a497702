#include "spatial/table_rows.hpp"

namespace nivaro {
namespace {

bool isBlank(std::string_view line, Tabs tabs) {
  const std::string_view blanks = tabs == Tabs::AreBlank ? " \t" : " ";
  return line.find_first_not_of(blanks) == std::string_view::npos;
}

}  // namespace

ReadStatus readRow(Unit& table, std::string_view& row, Tabs tabs) {
  for (;;) {
    const ReadStatus status = table.readRecord(row);
    if (status != ReadStatus::Ok || !isBlank(row, tabs)) return status;
  }
}

bool rowsLeft(Unit& table, Tabs tabs) {
  std::string_view row;
  const ReadStatus status = readRow(table, row, tabs);
  if (status == ReadStatus::Ok) table.backspace();
  return status != ReadStatus::End;
}

}  // namespace nivaro
