#include "morphology/side_flow.hpp"

#include <cmath>

#include "morphology/transport_capacity.hpp"

namespace nivaro {
namespace {

// A side by the cells below and above it: its own elements stand at the cell below.
struct SidePlace {
  Cell below;
  Cell above;
  Cell across;  // the one that is not the cell that looks
};

SidePlace placeOf(Cell cell, Axis axis, Side side) {
  if (side == Side::Upper) {
    const Cell across = moved(cell, axis, 1);
    return {cell, across, across};
  }
  const Cell across = moved(cell, axis, -1);
  return {across, cell, across};
}

Grid<const double> normalVelocity(const StepInput& in, Axis axis) {
  return axis == Axis::Second ? in.flow.v2 : in.flow.v1;
}

Grid<const double> tangentialVelocity(const StepInput& in, Axis axis) {
  return axis == Axis::Second ? in.flow.v1 : in.flow.v2;
}

double cellDepth(const StepInput& in, Cell cell) {
  return at(in.flow.waterLevel, cell) + at(in.bed.zc, cell);
}

double openDepth(const StepInput& in, Axis axis, const SidePlace& place) {
  const double bed = at(axis == Axis::Second ? in.bed.z2 : in.bed.z1, place.below);
  const double levelBelow = at(in.flow.waterLevel, place.below);
  const double levelAbove = at(in.flow.waterLevel, place.above);
  const double depth = 0.5 * (levelBelow + levelAbove) + bed;
  if (!in.settings.raiseSideDepth) return depth;
  const double higher = levelBelow > levelAbove ? levelBelow : levelAbove;
  const double raised = in.settings.raiseFactor * (higher + bed);
  return raised > depth ? raised : depth;
}

// The four elements around the side lie at the cell above it and before that cell.
double openTangential(const StepInput& in, Axis axis, Cell above) {
  const auto velocity = tangentialVelocity(in, axis);
  const auto& [i, j] = above;
  return (velocity(i, j) + velocity(i - 1, j) + velocity(i - 1, j - 1) + velocity(i, j - 1)) / 4.0;
}

SideFlow openFlow(const StepInput& in, Cell cell, Axis axis, const SidePlace& place,
                  bool downstream) {
  SideFlow flow;
  flow.depth = openDepth(in, axis, place);
  flow.normal = at(normalVelocity(in, axis), place.below);
  flow.tangential = openTangential(in, axis, place.above);
  if (downstream && in.parameters.velocityCentred)
    flow.normal = flow.normal * flow.depth / cellDepth(in, cell);
  return flow;
}

// Toward a dry cell the flow is that of the wet cell itself, with the velocity of its opposite side. Along
// the second axis one tangential element is taken beyond the side, along the first both are the cell's.
SideFlow flowTowardDryCell(const StepInput& in, Cell cell, Axis axis, Side side, Cell dry) {
  const auto across = tangentialVelocity(in, axis);
  const Cell opposite = side == Side::Lower ? cell : moved(cell, axis, -1);
  const Cell other = axis == Axis::Second ? dry : moved(cell, Axis::Second, -1);
  return {cellDepth(in, cell), at(normalVelocity(in, axis), opposite),
          (at(across, cell) + at(across, other)) / 2.0};
}

}  // namespace

SideFlow sideFlow(const StepInput& in, Cell cell, Axis axis, Side side, bool downstream) {
  const SidePlace place = placeOf(cell, axis, side);
  if (isTrue(at(in.flow.wet, place.across))) return openFlow(in, cell, axis, place, downstream);
  if (isTrue(at(in.flow.flow, cell))) return flowTowardDryCell(in, cell, axis, side, place.across);
  return {};
}

SideTransport sideTransport(const StepInput& in, Cell cell, const SideFlow& flow) {
  const double speed = std::sqrt(flow.tangential * flow.tangential + flow.normal * flow.normal);
  return resolvedCapacity({flow.depth, speed, flow.normal}, at(in.fields.d50, cell),
                          at(in.fields.d90, cell), in.parameters);
}

SideTransport resolvedCapacity(const Current& current, double d50, double d90,
                               const MorphologyParameters& p) {
  const auto& [depth, speed, normal] = current;
  const Transport q = transportCapacity(depth, speed, grainTerms(d50, p), d90, p);
  if (!(speed > 0.0)) return {q.suspended, q.bedLoad};
  return {q.suspended * normal / speed, q.bedLoad * normal / speed};
}

}  // namespace nivaro
