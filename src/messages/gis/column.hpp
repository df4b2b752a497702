// The attribute columns of a layer, by name, type and width, and what they are called in each of
// the two formats.
#pragma once

#include <string>
#include <vector>

namespace nivaro::gis {

enum class ColumnType { Char, Integer, SmallInt, Decimal, Float, Date, Logical };

struct Column {
  std::string name;
  ColumnType type = ColumnType::Char;
  int width = 0;  // needed for Char and Decimal; 0 is the type's own width for the others
  int decimals = 0;

  // Char: fields of a dBase table, of this width each, that a longer text runs on through.
  int tableFields = 1;
};

// A column, or a part of one, as a field of a dBase table.
struct DbaseField {
  std::string name;  // at most 10 characters
  char type;
  int length;
  int decimals;
  bool goesOn = false;  // the text of the field before it
};

// The column's line in a MIF header.
std::string mifColumn(const Column& column);

// The second field and those behind it are called NAME_2 and so on.
std::vector<DbaseField> dbaseFields(const Column& column);

// Why these columns cannot be the columns of a layer, empty when they can. Both formats share the
// narrower limits of dBase, so that a layer can be had in either.
std::string columnsFault(const std::vector<Column>& columns);

}  // namespace nivaro::gis
