// A control line split into its command and its value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "text/report.hpp"

namespace nivaro {

// Blanks around "==" stay with the pieces: keyword tests and value readers skip them.
struct CommandLine {
  std::string command;
  std::string value;
  std::optional<Report> warning;  // to be delivered; the run goes on
};

// Splits at the first "==". A line without it is turned to upper case in place and is its own
// command: silently when it holds a block keyword ("END IF"), else with a warning, or, for a host
// that wants it `strict`, an error instead of a command.
Outcome<CommandLine> commandLine(std::string& line, bool strict);

// The pieces of a line split by someone else's rule.
struct CheckedLine {
  bool holdsFlag = false;  // the command holds the flag, or the flag is "*" and there is a command
  std::string command;
  std::string value;
};

// Splits at the first `separator` or, where that is blank or not in the line, behind `column`. A
// line without its separator and with column 0 is all command; it counts as one even when blank.
CheckedLine checkLine(std::string_view line, std::string_view flag, std::string_view separator,
                      std::int32_t column);

}  // namespace nivaro
