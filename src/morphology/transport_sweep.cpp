#include "morphology/transport_sweep.hpp"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "morphology/activity.hpp"
#include "morphology/line_buffers.hpp"
#include "morphology/line_carry.hpp"
#include "morphology/side_flow.hpp"
#include "morphology/transport_capacity.hpp"

namespace nivaro {
namespace {

void put(const SideFlow& flow, SideBuffer& side, std::size_t k) {
  side.depth[k] = flow.depth;
  side.normal[k] = flow.normal;
  side.speed[k] = speed(flow);
}

template <Axis axis>
void gatherSides(const StepInput& in, Cell cell, LineBuffers& line, std::size_t k) {
  const SideFlow lower = sideFlow<axis>(in, cell, Side::Lower);
  const SideFlow upper = sideFlow<axis>(in, cell, Side::Upper);
  put(lower, line.lower, k);
  put(upper, line.upper, k);
  if (!in.parameters.velocityCentred) return;

  put(centred(lower, in, cell), line.centredLower, k);
  put(centred(upper, in, cell), line.centredUpper, k);
}

void gatherCell(const StepInput& in, Cell cell, LineBuffers& line, std::size_t k) {
  const auto [i, j] = cell;
  line.d50[k] = in.fields.d50(i, j);
  line.d90[k] = in.fields.d90(i, j);
  line.inSituVoids[k] = in.fields.inSituVoids(i, j);
  line.depositionVoids[k] = in.fields.depositionVoids(i, j);
  line.atBedLimit[k] = isAtBedLimit(in, i, j) ? 1 : 0;
  line.change[k] = in.fields.cellChange(i, j);
  line.concentration[k] = in.fields.concentration(i, j);
  line.adaptation[k] = in.fields.adaptation(i, j);
}

template <Axis axis>
void gather(const StepInput& in, int lineNumber, Range along, LineBuffers& line) {
  std::size_t k = 0;
  for (int position = along.first; position <= along.last; ++position) {
    const Cell cell = GridLine<axis>::cell(lineNumber, position);
    if (!isActiveAndWet(in, cell.i, cell.j)) continue;

    line.position[k] = position;
    gatherCell(in, cell, line, k);
    gatherSides<axis>(in, cell, line, k);
    ++k;
  }
  line.count = k;
}

bool isSameNumber(double a, double b) {
  return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Capacity at one side of every buffered cell, resolved along the index: the expensive stage.
void sideTransports(const MorphologyParameters& p, const LineBuffers& line, SideBuffer& side) {
  if (line.count == 0) return;

  GrainTerms grain = grainTerms(line.d50[0], p);
  for (std::size_t k = 0; k < line.count; ++k) {
    // Grain sizes come in patches, so the terms of the cell before mostly serve again.
    if (!isSameNumber(grain.d50, line.d50[k])) grain = grainTerms(line.d50[k], p);

    const double speed = side.speed[k];
    const Transport q = transportCapacity(side.depth[k], speed, grain, line.d90[k], p);
    const bool moves = speed > 0.0;
    side.suspended[k] = moves ? q.suspended * side.normal[k] / speed : q.suspended;
    side.bedLoad[k] = moves ? q.bedLoad * side.normal[k] / speed : q.bedLoad;
  }
}

// Without velocity centring both sweeps see the same sides; with it each has its own downstream
// one.
void sweepLine(const StepInput& in, LineBuffers& line) {
  sideTransports(in.parameters, line, line.lower);
  sideTransports(in.parameters, line, line.upper);
  if (!in.parameters.velocityCentred) {
    carryForward(in, line.lower, line.upper, line);
    carryReverse(in, line.lower, line.upper, line);
    return;
  }

  sideTransports(in.parameters, line, line.centredLower);
  sideTransports(in.parameters, line, line.centredUpper);
  carryForward(in, line.lower, line.centredUpper, line);
  carryReverse(in, line.centredLower, line.upper, line);
}

template <Axis axis>
void scatter(const StepInput& in, int lineNumber, const LineBuffers& line) {
  for (std::size_t k = 0; k < line.count; ++k) {
    const auto [i, j] = GridLine<axis>::cell(lineNumber, line.position[k]);
    in.fields.cellChange(i, j) = line.change[k];
    in.fields.concentration(i, j) = line.concentration[k];
    in.fields.adaptation(i, j) = line.adaptation[k];
  }
}

std::size_t length(Range range) {
  return static_cast<std::size_t>(std::max(range.last - range.first + 1, 0));
}

}  // namespace

template <Axis axis>
void addTransport(const StepInput& in, const Area& area) {
  const Range along = GridLine<axis>::along(area);
  const Range across = GridLine<axis>::across(area);
  LineBuffers line(length(along));
  for (int lineNumber = across.first; lineNumber <= across.last; ++lineNumber) {
    gather<axis>(in, lineNumber, along, line);
    sweepLine(in, line);
    scatter<axis>(in, lineNumber, line);
  }
}

template void addTransport<Axis::First>(const StepInput&, const Area&);
template void addTransport<Axis::Second>(const StepInput&, const Area&);

}  // namespace nivaro
