// Control lines read from a file, one at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/console.hpp"
#include "platform/unit.hpp"
#include "text/control_line.hpp"
#include "text/report.hpp"

namespace nivaro {

// The next record of the unit, at most `width` characters of it, without tabs, comments and
// variables (see `commentLine`); true when it holds a command. With `echo` the record is shown as
// it was read. A null unit is one that cannot be read. Reports 0201 and 0202 (nothing to be read)
// and what `commentLine` does; `unitNumber` is named in them.
Outcome<bool> readLine(Unit* unit, std::int32_t unitNumber, std::size_t width, std::string& line,
                       const VariableTable& variables, bool echo, Console& console);

// Whether no further item could be read from the unit. The item read is put into `buffer`, and the
// rest of its record is skipped: whoever wants the record as a whole steps back first.
bool eofLineRead(Unit* unit, std::string& buffer);

}  // namespace nivaro
