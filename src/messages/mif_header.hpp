// Questions about a MIF file as a whole.
#pragma once

#include <string>
#include <string_view>

#include "messages/diagnostics.hpp"
#include "messages/gis/object.hpp"
#include "platform/unit.hpp"

namespace nivaro {

// Reads on to the line that names the layer's projection ("CoordSys" in any letter case) and puts
// it into `line`; without such a line `line` stays as it was. A file that cannot be read is warned
// of.
void findProjectionLine(Unit& mif, std::string& line, Diagnostics& diagnostics);

// Reads on to the first object that is drawn, and says what geometry it has: that of a point, a
// polyline or a region; of a null object where there is none, or the file cannot be read.
gis::ObjectKind findGeometry(Unit& mif);

// The line in the form in which projections are compared: upper case, without blanks, tabs and
// quotes.
std::string normaliseHeaderLine(std::string_view line);

}  // namespace nivaro
