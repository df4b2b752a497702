#include "bed.hpp"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace host {

double BedProfile::height(double x, double y) const {
  const double distance = along == Axis::X ? x : y;
  if (points.empty()) return 0;
  if (distance <= points.front().first) return points.front().second;
  if (distance >= points.back().first) return points.back().second;
  const auto next =
      std::upper_bound(points.begin(), points.end(), distance,
                       [](double value, const auto& point) { return value < point.first; });
  const auto& [x1, z1] = *(next - 1);
  const auto& [x2, z2] = *next;
  return z1 + (z2 - z1) * (distance - x1) / (x2 - x1);
}

std::optional<double> BedRaster::value(double x, double y) const {
  const int column =
      std::clamp(static_cast<int>(std::floor((x - originX) / cellSize)), 0, columns - 1);
  const int rowFromSouth =
      std::clamp(static_cast<int>(std::floor((y - originY) / cellSize)), 0, rows - 1);
  const int row = rows - 1 - rowFromSouth;
  return values[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                static_cast<std::size_t>(column)];
}

namespace {

[[noreturn]] void failAt(const std::filesystem::path& file, int line, const std::string& text) {
  throw std::runtime_error(file.string() + ":" + std::to_string(line) + ": " + text);
}

std::string lowered(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// The header: keys with a number each, in any order, until a line starts with a number.
struct RasterHeader {
  double columns = 0, rows = 0, cellSize = 0, x = 0, y = 0, noData = -9999;
  bool cellCentres = false;  // x and y are those of the lower left cell's centre
  int lines = 0;

  bool take(const std::string& key, double number) {
    if (key == "ncols") return columns = number, true;
    if (key == "nrows") return rows = number, true;
    if (key == "cellsize") return cellSize = number, true;
    if (key == "nodata_value") return noData = number, true;
    if (key != "xllcorner" && key != "yllcorner" && key != "xllcenter" && key != "yllcenter")
      return false;
    cellCentres = key.ends_with("center");
    (key.front() == 'x' ? x : y) = number;
    return true;
  }
};

RasterHeader readHeader(std::istream& in, const std::filesystem::path& file) {
  RasterHeader header;
  while (std::isalpha((in >> std::ws).peek())) {
    std::string key;
    double number = 0;
    ++header.lines;
    if (!(in >> key >> number)) failAt(file, header.lines, "expected a number behind " + key + ".");
    if (!header.take(lowered(key), number))
      failAt(file, header.lines, "unknown key \"" + key + "\" in the header of an ASCII grid.");
  }
  if (header.columns < 1 || header.rows < 1 || header.cellSize <= 0)
    failAt(file, header.lines, "the header lacks ncols, nrows or cellsize, each above 0.");
  return header;
}

}  // namespace

BedRaster readRaster(const std::filesystem::path& file) {
  std::ifstream in(file);
  if (!in) throw std::runtime_error(file.string() + ": cannot be opened as a bed raster.");
  const RasterHeader header = readHeader(in, file);

  BedRaster raster;
  raster.columns = static_cast<int>(header.columns);
  raster.rows = static_cast<int>(header.rows);
  raster.cellSize = header.cellSize;
  const double shift = header.cellCentres ? 0.5 * header.cellSize : 0;
  raster.originX = header.x - shift;
  raster.originY = header.y - shift;
  const auto count =
      static_cast<std::size_t>(raster.columns) * static_cast<std::size_t>(raster.rows);
  raster.values.reserve(count);
  double number = 0;
  while (raster.values.size() < count && in >> number) {
    raster.values.push_back(number == header.noData ? std::nullopt : std::optional(number));
  }
  if (raster.values.size() < count) {
    const int line =
        header.lines + 1 +
        static_cast<int>(raster.values.size() / static_cast<std::size_t>(raster.columns));
    failAt(file, line,
           "expected " + std::to_string(count) + " numbers, found " +
               std::to_string(raster.values.size()) + ".");
  }
  return raster;
}

std::optional<double> BedShape::elevation(double x, double y) const {
  const std::optional<double> base = raster ? raster->value(x, y) : std::optional(plane(x, y));
  if (!base) return std::nullopt;
  double z = *base;
  for (const BedProfile& profile : profiles) z += profile.height(x, y);
  for (const BedBox& box : boxes) {
    if (box.covers(x, y)) z += box.height;
  }
  return z;
}

BedArrays bedArrays(const BedShape& shape, const GridFrame& grid) {
  const Field<double> zero(grid, 0.0);
  BedArrays bed{zero, zero, zero, zero, Field<std::int32_t>(grid, 0)};
  for (int j = 1; j <= grid.m(); ++j) {
    for (int i = 1; i <= grid.n(); ++i) {
      const bool inModel =
          i >= grid.firstI() && i <= grid.lastI() && j >= grid.firstJ() && j <= grid.lastJ();
      const auto z = shape.elevation(grid.x(j), grid.y(i));
      bed.zc(i, j) = -z.value_or(0);
      bed.code(i, j) = inModel && z ? 1 : 0;
    }
  }
  // Sides and corners lie at the mean of their cells, as the module rebuilds them.
  for (int j = 1; j <= grid.m(); ++j) {
    for (int i = 1; i <= grid.n(); ++i) {
      const int i2 = std::min(i + 1, grid.n());
      const int j2 = std::min(j + 1, grid.m());
      bed.z1(i, j) = 0.5 * (bed.zc(i, j) + bed.zc(i2, j));
      bed.z2(i, j) = 0.5 * (bed.zc(i, j) + bed.zc(i, j2));
      bed.zpts(i, j) = 0.25 * (bed.zc(i, j) + bed.zc(i2, j) + bed.zc(i, j2) + bed.zc(i2, j2));
    }
  }
  return bed;
}

}  // namespace host
