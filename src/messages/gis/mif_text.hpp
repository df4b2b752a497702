// Objects and headers as the lines of a MIF file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "messages/gis/column.hpp"
#include "messages/gis/object.hpp"
#include "platform/unit.hpp"

namespace nivaro::gis {

inline constexpr int kCoordinateDecimals = 6;
inline constexpr int kLabelDecimals = 3;  // of a label's box and of the end of its arrow

// X and Y, each in 16 columns or in as many as keep it readable and apart from the other.
std::string position(const Vertex& vertex, int decimals = kCoordinateDecimals);

// The header up to and including "Data". `coordSys` is a whole CoordSys line; when it is
// blank the layer is in metres of no particular projection.
bool writeMifHeader(Unit& file, std::string_view coordSys, const std::vector<Column>& columns);

// The object without its style. False when a line could not be written; an object that cannot be
// drawn is written as "none".
bool writeMifObject(Unit& file, const Object& object);

}  // namespace nivaro::gis
