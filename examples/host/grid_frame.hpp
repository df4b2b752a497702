// The host's grid: square cells counted as the module counts them, from 1, with the first index
// along y (rows) and the second along x (columns), the first varying fastest in memory.
#pragma once

#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace host {

// Where the grid lies on the map: the place of its lower left corner, and the direction of its x axis
// in radians, anticlockwise from the map's.
struct MapPlace {
  double x = 0, y = 0;
  double angle = 0;
};

// A margin of two cells surrounds the model: the inner ring holds the cells outside an open edge,
// and the module's layers place their first cell at (3, 3), which so is the model's first cell.
struct GridFrame {
  static constexpr int kMargin = 2;

  int columns = 0;      // cells of the model along x
  int rows = 0;         // cells of the model along y
  double cellSize = 0;  // m
  double originX = 0;   // lower left corner of the model, m
  double originY = 0;
  // None: the grid's own coordinates are those of the map.
  std::optional<MapPlace> map = std::nullopt;

  int n() const { return rows + 2 * kMargin; }
  int m() const { return columns + 2 * kMargin; }
  int firstI() const { return kMargin + 1; }
  int firstJ() const { return kMargin + 1; }
  int lastI() const { return kMargin + rows; }
  int lastJ() const { return kMargin + columns; }
  // Centre of a column or row of cells, m.
  double x(int j) const { return originX + (j - kMargin - 0.5) * cellSize; }
  double y(int i) const { return originY + (i - kMargin - 0.5) * cellSize; }
  double cellArea() const { return cellSize * cellSize; }

  MapPlace place() const { return map.value_or(MapPlace{originX, originY, 0}); }
  // A point of the grid's own coordinates on the map.
  std::pair<double, double> toMap(double px, double py) const {
    const MapPlace corner = place();
    const double a = px - originX;
    const double b = py - originY;
    const double c = std::cos(corner.angle);
    const double s = std::sin(corner.angle);
    return {corner.x + c * a - s * b, corner.y + s * a + c * b};
  }
};

// One value per cell (or per side or corner of it), margin included.
template <typename T>
class Field {
 public:
  Field(const GridFrame& grid, T value)
      : n_(grid.n()),
        values_(static_cast<std::size_t>(grid.n()) * static_cast<std::size_t>(grid.m()), value) {}

  T& operator()(int i, int j) { return values_[position(i, j)]; }
  const T& operator()(int i, int j) const { return values_[position(i, j)]; }
  T* data() { return values_.data(); }
  const T* data() const { return values_.data(); }
  void swap(Field& other) { values_.swap(other.values_); }
  // Elements before (i, j), in this field and in any other of the same grid.
  std::size_t position(int i, int j) const {
    return static_cast<std::size_t>(j - 1) * static_cast<std::size_t>(n_) +
           static_cast<std::size_t>(i - 1);
  }

 private:
  int n_;
  std::vector<T> values_;
};

// Visits every cell of the model in the order of memory.
template <typename Visit>
void forEachCell(const GridFrame& grid, Visit visit) {
  for (int j = grid.firstJ(); j <= grid.lastJ(); ++j) {
    for (int i = grid.firstI(); i <= grid.lastI(); ++i) visit(i, j);
  }
}

enum class Axis { X, Y };

}  // namespace host
