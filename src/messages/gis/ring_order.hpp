// The order of the vertices of a region's rings, as shapefiles want it: outer rings clockwise, the
// rings of holes the other way.
#pragma once

#include <vector>

#include "messages/gis/object.hpp"

namespace nivaro::gis {

// Positive for a ring that runs counter-clockwise. The closing edge is implied.
double signedArea(Part ring);

// The rings, those that run the wrong way reversed. A ring within an odd number of the others is a
// hole; the rings of one region may touch but do not cross.
std::vector<std::vector<Vertex>> orderedRings(const std::vector<Part>& rings);

}  // namespace nivaro::gis
