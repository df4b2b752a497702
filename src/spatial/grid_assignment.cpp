#include "spatial/grid_assignment.hpp"

#include <string>
#include <string_view>

#include "platform/fixed_field.hpp"
#include "platform/real_to_integer.hpp"
#include "spatial/plane.hpp"
#include "spatial/screen_stop.hpp"
#include "text/number_text.hpp"

namespace nivaro {
namespace {

double sum(double a, double b) {
  return a + b;
}

// Reals hold the sum of two 4-byte integers exactly; beyond their range it stops at the bound.
std::int32_t sum(std::int32_t a, std::int32_t b) {
  return truncated(static_cast<double>(a) + b);
}

}  // namespace

// A value and the field it is written to.
template <typename T>
struct GridAssignment::Brush {
  Grid<T> field;
  T value;
  bool regionsAdd;

  // False for a cell that the field does not hold.
  bool set(std::int32_t i, std::int32_t j) const {
    if (i < 1 || i > field.n() || j < 1 || j > field.m()) return false;
    field(i, j) = value;
    return true;
  }

  void fill(std::int32_t i, std::int32_t j) const {
    T& cell = field(i, j);
    cell = regionsAdd ? sum(cell, value) : value;
  }
};

GridAssignment::GridAssignment(Diagnostics& diagnostics, MifReader& layers)
    : diagnostics_(diagnostics), layers_(layers) {}

std::int32_t GridAssignment::processNextObject(Unit& mif, Unit& mid, const GridFrame& frame,
                                               const AssignmentTarget& target) {
  const MifObject* object = layers_.nextObject(mif, mid);
  if (object == nullptr) return 0;

  const auto assignAll = [&](const auto& brush, std::string_view valueText) {
    std::int32_t cellCount = 0;
    for (std::int32_t section = 0; section < object->sections; ++section) {
      if (!layers_.readSection(mif)) continue;
      cellCount = assignSection(*object, frame, brush);
      showProgress(*object, valueText, cellCount);
    }
    return cellCount;
  };
  const double value = layers_.value();
  if (const auto* real = std::get_if<Grid<double>>(&target.field))
    return assignAll(Brush<double>{*real, value, target.regionsAdd}, areal(value));
  const std::int32_t whole = layers_.wholeValue(mid);
  return assignAll(
      Brush<std::int32_t>{std::get<Grid<std::int32_t>>(target.field), whole, target.regionsAdd},
      ainteger(whole));
}

template <typename T>
std::int32_t GridAssignment::assignSection(const MifObject& object, const GridFrame& frame,
                                           const Brush<T>& brush) {
  localX_.resize(layers_.x().size());
  localY_.resize(layers_.y().size());
  geoShift(layers_.x(), layers_.y(), frame.x0, frame.y0, frame.angle, localX_, localY_);
  switch (object.kind) {
    case MifKind::Point:
    case MifKind::MultiPoint:
      return assignPoint(frame, brush);
    case MifKind::Region:
      return assignRegion(frame, brush);
    default:
      return assignLine(frame, brush);
  }
}

template <typename T>
std::int32_t GridAssignment::assignPoint(const GridFrame& frame, const Brush<T>& brush) const {
  const SubGridArea area =
      setSubGridArea(localX_, localY_, frame.dx, frame.firstBound, frame.secondBound);
  if (area.isEmpty()) return 0;
  const bool isSet =
      brush.set(area.firstLow + frame.firstOffset, area.secondLow + frame.secondOffset);
  return isSet ? 1 : 0;
}

template <typename T>
std::int32_t GridAssignment::assignLine(const GridFrame& frame, const Brush<T>& brush) {
  std::int32_t cellCount = 0;
  for (std::size_t k = 1; k < localX_.size(); ++k) {
    const Segment segment{localX_[k - 1], localY_[k - 1], localX_[k], localY_[k]};
    for (const CellIndex& cell :
         valueOrStop(diagnostics_, segmentWalk_.cells(segment, frame.dx, frame.dy))) {
      if (cell.first < 1 || cell.first > frame.firstBound) continue;
      if (cell.second < 1 || cell.second > frame.secondBound) continue;
      if (brush.set(cell.first + frame.firstOffset, cell.second + frame.secondOffset)) ++cellCount;
    }
  }
  return cellCount;
}

template <typename T>
std::int32_t GridAssignment::assignRegion(const GridFrame& frame, const Brush<T>& brush) {
  const InsideCells cells =
      valueOrStop(diagnostics_, regionFill_.find(localX_, localY_, layers_.polygonEnds(), frame,
                                                 brush.field.n(), brush.field.m()));
  std::int32_t cellCount = 0;
  auto inside = cells.inside.begin();
  for (std::int32_t j = cells.range.firstJ; j <= cells.range.lastJ; ++j)
    for (std::int32_t i = cells.range.firstI; i <= cells.range.lastI; ++i) {
      if (*inside++ == 0) continue;
      brush.fill(i, j);
      ++cellCount;
    }
  return cellCount;
}

void GridAssignment::showProgress(const MifObject& object, std::string_view valueText,
                                  std::int32_t cellCount) {
  const bool isRegion = object.kind == MifKind::Region;
  std::string line = "...MIF ";
  line.append(object.keyword).append(" (");
  line += integerField(static_cast<std::int64_t>(localX_.size()), 6) + " vertices";
  if (isRegion) line += " /" + integerField(object.polygons, 3) + " polygons";
  line += isRegion ? ") assigned " : ") assigned a value of ";
  line.append(valueText);
  line += " to" + integerField(cellCount, 6) + " cells";
  diagnostics_.console().line(line);
}

}  // namespace nivaro
