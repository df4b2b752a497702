// Questions about the header of a MIF file.
#pragma once

#include <string>
#include <string_view>

#include "messages/diagnostics.hpp"
#include "platform/unit.hpp"

namespace nivaro {

// Reads on to the line that names the layer's projection ("CoordSys" in any letter case) and puts
// it into `line`; without such a line `line` stays as it was. A file that cannot be read is warned
// of.
void findProjectionLine(Unit& mif, std::string& line, Diagnostics& diagnostics);

// The line in the form in which projections are compared: upper case, without blanks, tabs and
// quotes.
std::string normaliseHeaderLine(std::string_view line);

}  // namespace nivaro
