#include "morphology/side_flow.hpp"

#include <algorithm>
#include <cmath>

namespace nivaro {
namespace {

double cellDepth(const StepInput& in, Cell c) {
  return in.flow.waterLevel(c.i, c.j) + in.bed.zc(c.i, c.j);
}

// Depth at an open side with bed depth zs. Raising keeps water on a side whose bed stands high
// between two cells.
double openDepth(const StepInput& in, Cell cell, Cell neighbour, double zs) {
  const double level = in.flow.waterLevel(cell.i, cell.j);
  const double beyond = in.flow.waterLevel(neighbour.i, neighbour.j);
  const double depth = 0.5 * (level + beyond) + zs;
  if (!in.settings.raiseSideDepth) return depth;
  return std::max(depth, in.settings.raiseFactor * (std::max(level, beyond) + zs));
}

// Mean over the four tangential elements around the side below cell `above`. Both axes need the
// same four and add them in the same order.
double openTangential(Grid<const double> v, Cell above) {
  const auto [i, j] = above;
  return 0.25 * (v(i, j) + v(i - 1, j) + v(i - 1, j - 1) + v(i, j - 1));
}

// Toward a dry cell the flow is that of the cell itself. The two axes do not mirror each other
// here: along the second index one tangential element is taken beyond the side, along the first
// both are the cell's own.
template <Axis axis>
double dryTangential(Grid<const double> v, Cell cell, Cell neighbour) {
  const Cell other = axis == Axis::Second ? neighbour : Cell{cell.i, cell.j - 1};
  return 0.5 * (v(cell.i, cell.j) + v(other.i, other.j));
}

}  // namespace

template <Axis axis>
SideFlow sideFlow(const StepInput& in, Cell cell, Side side) {
  using Line = GridLine<axis>;
  const bool lower = side == Side::Lower;
  const Cell above = lower ? cell : Line::after(cell);
  const Cell below = Line::before(above);  // the element of the side arrays
  const Cell neighbour = lower ? below : above;
  const auto normal = Line::normal(in.flow);
  const auto tangential = Line::tangential(in.flow);

  if (isTrue(in.flow.wet(neighbour.i, neighbour.j))) {
    const double zs = Line::sideDepth(in.bed)(below.i, below.j);
    return {openDepth(in, cell, neighbour, zs), normal(below.i, below.j),
            openTangential(tangential, above), true};
  }
  if (!isTrue(in.flow.flow(cell.i, cell.j))) return {};

  const Cell opposite = lower ? cell : Line::before(cell);
  return {cellDepth(in, cell), normal(opposite.i, opposite.j),
          dryTangential<axis>(tangential, cell, neighbour), false};
}

SideFlow centred(SideFlow flow, const StepInput& in, Cell cell) {
  if (flow.open) flow.normal = flow.normal * flow.depth / cellDepth(in, cell);
  return flow;
}

double speed(const SideFlow& flow) {
  return std::sqrt(flow.tangential * flow.tangential + flow.normal * flow.normal);
}

template SideFlow sideFlow<Axis::First>(const StepInput&, Cell, Side);
template SideFlow sideFlow<Axis::Second>(const StepInput&, Cell, Side);

}  // namespace nivaro
