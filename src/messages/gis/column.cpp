#include "messages/gis/column.hpp"

#include <array>
#include <cstddef>
#include <set>

#include "messages/gis/dbase_file.hpp"
#include "text/blank_padded.hpp"
#include "text/transform.hpp"

namespace nivaro::gis {

namespace {

constexpr std::size_t kMifNameLength = 31;
constexpr std::size_t kDbaseNameLength = 10;

// One row per type, in the order of the enumeration.
struct TypeRow {
  std::string_view mifWord;
  char dbaseLetter;
  bool widthInMif;  // MIF gives the width in parentheses
  int ownLength;    // dBase length where the column states none; 0: it must
  int ownDecimals;
};
constexpr std::array<TypeRow, 7> kTypes{{
    {"Char", 'C', true, 0, 0},
    {"Integer", 'N', false, 11, 0},
    {"SmallInt", 'N', false, 6, 0},
    {"Decimal", 'N', true, 0, 0},
    {"Float", 'N', false, 24, 15},  // decimals, or readers would take it for a whole number
    {"Date", 'D', false, 8, 0},
    {"Logical", 'L', false, 1, 0},
}};

const TypeRow& rowOf(ColumnType type) {
  return kTypes[static_cast<std::size_t>(type)];
}

bool hasFixedLength(ColumnType type) {
  return type == ColumnType::Date || type == ColumnType::Logical;
}

std::string fieldFault(const DbaseField& field) {
  if (field.length < 1 || field.length > kLongestField)
    return "the length of a column must be 1 to 255";
  // A number with decimals has at least one digit and the point before them.
  if (field.decimals < 0 || (field.decimals > 0 && field.decimals > field.length - 2))
    return "the decimals of a column must fit its length";
  return "";
}

}  // namespace

std::string mifColumn(const Column& column) {
  const TypeRow& row = rowOf(column.type);
  std::string line = "  ";
  line += cleanAttributeName(column.name).substr(0, kMifNameLength);
  line += ' ';
  line += row.mifWord;
  if (!row.widthInMif) return line;
  line += '(' + std::to_string(column.width);
  if (column.type == ColumnType::Decimal) line += ',' + std::to_string(column.decimals);
  return line + ")";
}

std::vector<DbaseField> dbaseFields(const Column& column) {
  const TypeRow& row = rowOf(column.type);
  DbaseField field{.name = cleanAttributeName(column.name).substr(0, kDbaseNameLength),
                   .type = row.dbaseLetter,
                   .length = row.ownLength,
                   .decimals = row.ownDecimals};
  // A stated width would make of these what no reader knows.
  if (column.width != 0 && !hasFixedLength(column.type)) {
    field.length = column.width;
    field.decimals = column.type == ColumnType::Char ? 0 : column.decimals;
  }
  std::vector<DbaseField> fields{field};
  if (column.type != ColumnType::Char) return fields;
  field.goesOn = true;
  for (int number = 2; number <= column.tableFields; ++number) {
    const std::string suffix = '_' + std::to_string(number);
    field.name = fields.front().name.substr(0, kDbaseNameLength - suffix.size()) + suffix;
    fields.push_back(field);
  }
  return fields;
}

std::string columnsFault(const std::vector<Column>& columns) {
  if (columns.empty()) return "there must be at least one column";

  // Names are compared as dBase has them, cut and without regard to case.
  std::set<std::string> names;
  int recordLength = 1;  // the deletion flag
  std::size_t fieldCount = 0;
  for (const Column& column : columns) {
    if (stripped(column.name).empty()) return "a column has no name";
    for (const DbaseField& field : dbaseFields(column)) {
      if (++fieldCount > kMostFields) return "there are too many columns";
      if (!names.insert(upperCase(field.name)).second)
        return "column names must differ in their first 10 characters";
      if (std::string fault = fieldFault(field); !fault.empty()) return fault;
      recordLength += field.length;
      if (recordLength > kLongestRecord) return "a record must be at most 32767 characters long";
    }
  }
  return "";
}

}  // namespace nivaro::gis
