// Gives the value of a layer's objects to the cells that they cover: points to the cell around
// them, lines to the cells along them, regions to the cells whose centres they enclose.
#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "messages/diagnostics.hpp"
#include "platform/grid.hpp"
#include "platform/unit.hpp"
#include "spatial/grid_frame.hpp"
#include "spatial/mif_reader.hpp"
#include "spatial/region_fill.hpp"
#include "spatial/segment_walk.hpp"

namespace nivaro {

// The field that receives the values, rounded to the nearest in a field of integers.
struct AssignmentTarget {
  std::variant<Grid<double>, Grid<std::int32_t>> field;
  bool regionsAdd = false;  // regions add their value to what the cells hold
};

class GridAssignment {
 public:
  GridAssignment(Diagnostics& diagnostics, MifReader& layers);

  // Assigns the next object of the layer and says on the screen, section by section, to how many
  // cells; returns the number of the last section. Nothing happens at the end of the layer. What is
  // wrong with the layer ends the run.
  std::int32_t processNextObject(Unit& mif, Unit& mid, const GridFrame& frame,
                                 const AssignmentTarget& target);

 private:
  template <typename T>
  struct Brush;

  template <typename T>
  std::int32_t assignSection(const MifObject& object, const GridFrame& frame,
                             const Brush<T>& brush);
  template <typename T>
  std::int32_t assignPoint(const GridFrame& frame, const Brush<T>& brush) const;
  template <typename T>
  std::int32_t assignLine(const GridFrame& frame, const Brush<T>& brush);
  template <typename T>
  std::int32_t assignRegion(const GridFrame& frame, const Brush<T>& brush);
  void showProgress(const MifObject& object, std::string_view valueText, std::int32_t cellCount);

  Diagnostics& diagnostics_;
  MifReader& layers_;
  SegmentWalk segmentWalk_;
  RegionFill regionFill_;
  std::vector<double> localX_;  // the section's vertices in the frame of the grid
  std::vector<double> localY_;
};

}  // namespace nivaro
