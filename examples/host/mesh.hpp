// The mesh behind the module's dataset: nodes in the order of the points and elements in the order
// of the flags that the dataset writer gets, so that a viewer lays the one over the other.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "bed.hpp"
#include "grid_frame.hpp"

namespace host {

struct Mesh {
  // Corner (i, j), shared by cells (i, j), (i + 1, j), (i, j + 1) and (i + 1, j + 1), of each node.
  std::vector<std::int32_t> pointI, pointJ;
  std::vector<std::array<std::int32_t, 4>> elements;  // nodes from 1, anticlockwise
};

// Cells with a code only, and their corners. Elements run over i in the outer and j in the inner
// loop, as the module walks its flags.
Mesh makeMesh(const GridFrame& grid, const Field<std::int32_t>& code);

// The mesh as a .2dm text on the map; node heights are bed elevations.
std::string meshText(const Mesh& mesh, const GridFrame& grid, const Field<double>& cornerDepth);

}  // namespace host
