// The bed: its shape as a case describes it, and the arrays that the host shares with the module.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "grid_frame.hpp"

namespace host {

// Height over a distance along one axis: straight between the points, level beyond the ends.
struct BedProfile {
  Axis along = Axis::X;
  std::vector<std::pair<double, double>> points;  // (distance, height), distances increasing

  double height(double x, double y) const;
};

// A height on a rectangle.
struct BedBox {
  double lowX = 0, highX = 0, lowY = 0, highY = 0;
  double height = 0;

  bool covers(double x, double y) const {
    return x >= lowX && x <= highX && y >= lowY && y <= highY;
  }
};

// An ESRI ASCII grid. Where it holds no data the model has no cell.
struct BedRaster {
  int columns = 0, rows = 0;
  double originX = 0, originY = 0, cellSize = 0;
  std::vector<std::optional<double>> values;  // row by row from the north, as in the file

  // Value of the raster cell at a point; points outside take the nearest cell.
  std::optional<double> value(double x, double y) const;
};

// Throws std::runtime_error with the file, the line and what is expected.
BedRaster readRaster(const std::filesystem::path& file);

// A reference plane or a raster, with pieces added on top of it.
struct BedShape {
  double level = 0;               // of the plane at x = 0, y = 0; m
  double slopeX = 0, slopeY = 0;  // rise of the plane per metre
  std::optional<BedRaster> raster;
  std::vector<BedProfile> profiles;
  std::vector<BedBox> boxes;

  double plane(double x, double y) const { return level + slopeX * x + slopeY * y; }
  std::optional<double> elevation(double x, double y) const;
};

// What the host shares with the module: depths of the bed below datum, positive downward, on the
// module's staggering: cell centres, sides between (i, j) and (i + 1, j), sides between (i, j) and
// (i, j + 1), corners of the four.
struct BedArrays {
  Field<double> zc, z1, z2, zpts;
  Field<std::int32_t> code;  // 1: a cell of the model; 0: margin or no data
};

BedArrays bedArrays(const BedShape& shape, const GridFrame& grid);

}  // namespace host
