// Rows of a table file, one a line. Lines without a character to show are no rows.
#pragma once

#include <string_view>

#include "platform/list_input.hpp"
#include "platform/unit.hpp"

namespace nivaro {

// What else than the blank makes a line blank: tabs too, unless they separate the (empty) fields of
// a row.
enum class Tabs { AreBlank, SeparateFields };

// The next row; blank lines before it are skipped.
ReadStatus readRow(Unit& table, std::string_view& row, Tabs tabs = Tabs::AreBlank);

// Whether another row follows: blank lines at the end of a file are as if they were not there. A
// line that cannot be read counts as one, so that whoever reads it can say so.
bool rowsLeft(Unit& table, Tabs tabs = Tabs::AreBlank);

}  // namespace nivaro
