// Lines of cells through the grid, along either index.
#pragma once

#include "morphology/fields.hpp"
#include "platform/grid.hpp"

namespace nivaro {

enum class Axis { First, Second };

struct Cell {
  int i = 0;
  int j = 0;
};

// A range of positions along a line, or of lines across it; bounds included.
struct Range {
  int first = 1;
  int last = 0;
};

// A line along one axis: what the axis decides, so that the sweeps need not know it.
template <Axis axis>
struct GridLine {
  static constexpr bool kSecond = axis == Axis::Second;

  static Range along(const Area& area) {
    return kSecond ? Range{area.firstJ, area.lastJ} : Range{area.firstI, area.lastI};
  }
  static Range across(const Area& area) {
    return kSecond ? Range{area.firstI, area.lastI} : Range{area.firstJ, area.lastJ};
  }
  static Cell cell(int line, int position) {
    return kSecond ? Cell{line, position} : Cell{position, line};
  }

  // Neighbours on the line.
  static Cell before(Cell c) { return kSecond ? Cell{c.i, c.j - 1} : Cell{c.i - 1, c.j}; }
  static Cell after(Cell c) { return kSecond ? Cell{c.i, c.j + 1} : Cell{c.i + 1, c.j}; }

  // Arrays on the sides that the line crosses; element c lies between c and the cell after it.
  static Grid<const double> normal(const HostFlow& f) { return kSecond ? f.v2 : f.v1; }
  static Grid<const double> tangential(const HostFlow& f) { return kSecond ? f.v1 : f.v2; }
  static Grid<const double> sideDepth(const HostBed& b) { return kSecond ? b.z2 : b.z1; }
};

}  // namespace nivaro
