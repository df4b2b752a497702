#include "morphology/sweep.hpp"

#include <span>

#include "morphology/deposition.hpp"
#include "morphology/side_flow.hpp"

namespace nivaro {
namespace {

enum class Case {
  Passed,      // nothing settles or is taken up, t stays
  Erosion,     // taken up at once, to capacity
  Converging,  // all settles
  Deposition,  // relaxes toward capacity
};

// u is what the sweep brings to the cell, w what the side can carry through which it leaves.
struct Row {
  bool (*applies)(double u, double w);
  Case which;
};

// The tables of docs/numerics.md. The first row that applies counts; a number that is none meets none.
constexpr Row kForward[] = {
    {[](double u, double w) { return u < 0.0 && w > 0.0; }, Case::Erosion},
    {[](double u, double w) { return u < 0.0 && w <= 0.0; }, Case::Passed},
    {[](double u, double w) { return u >= 0.0 && w < 0.0; }, Case::Converging},
    {[](double u, double w) { return u >= 0.0 && w >= 0.0 && u <= w; }, Case::Erosion},
    {[](double u, double w) { return u >= 0.0 && w >= 0.0 && w < u; }, Case::Deposition},
};
constexpr Row kReverse[] = {
    {[](double u, double w) { return w <= 0.0 && u <= 0.0 && w <= u; }, Case::Erosion},
    {[](double u, double w) { return w <= 0.0 && u <= 0.0 && w > u; }, Case::Deposition},
};

Case caseOf(std::span<const Row> table, double u, double w) {
  for (const Row& row : table)
    if (row.applies(u, w)) return row.which;
  return Case::Passed;
}

// A side of a cell, as a sweep meets it.
struct Passage {
  SideFlow flow;
  SideTransport transport;
};

// A sweep at one cell after the other.
class Walk {
 public:
  Walk(const StepInput& in, Axis axis, Direction direction)
      : in_(in), axis_(axis), forward_(direction == Direction::Forward) {}

  void pass(Cell cell) {
    if (!isActiveAndWet(in_, cell)) return;
    const Passage lower = passage(cell, Side::Lower), upper = passage(cell, Side::Upper);
    const Passage& from = forward_ ? lower : upper;
    const Passage& to = forward_ ? upper : lower;
    const double u = carried_ != 0.0 ? carried_ : from.transport.suspended;
    const double w = to.transport.suspended;
    const Case found = forward_ ? caseOf(kForward, u, w) : caseOf(kReverse, u, w);
    const double settled = settle(cell, found, u, w, from.flow, to.flow);
    // Bed load counts once.
    const double net =
        forward_ ? lower.transport.bedLoad - upper.transport.bedLoad + settled : settled;
    raise(cell, net, found);
  }

 private:
  Passage passage(Cell cell, Side side) const {
    const SideFlow flow = sideFlow(in_, cell, axis_, side, (side == Side::Upper) == forward_);
    return {flow, sideTransport(in_, cell, flow)};
  }

  // The suspended term d, and t afterwards.
  double settle(Cell cell, Case found, double u, double w, const SideFlow& from,
                const SideFlow& to) {
    if (found == Case::Passed || (found == Case::Erosion && isAtBedLimit(in_, cell))) return 0.0;
    if (found == Case::Deposition) {
      const double settled = deposit(cell, u, w, from, to);
      carried_ = forward_ ? u - settled : u + settled;
      return settled;
    }
    carried_ = found == Case::Erosion ? w : 0.0;
    return forward_ ? u - w : w - u;
  }

  double deposit(Cell cell, double u, double w, const SideFlow& from, const SideFlow& to) const {
    const double sign = forward_ ? 1.0 : -1.0;
    const Deposition d = deposition({.inflow = sign * u,
                                     .equilibrium = sign * w,
                                     .inVelocity = sign * from.normal,
                                     .inDepth = from.depth,
                                     .outVelocity = sign * to.normal,
                                     .outDepth = to.depth},
                                    in_.settings.cellSize, in_.parameters.fallVelocity,
                                    in_.parameters.concentrationFactor);
    at(in_.fields.concentration, cell) = d.concentration;
    at(in_.fields.adaptation, cell) = d.adaptation;
    return d.deposited;
  }

  // By the transport that stays in the cell.
  void raise(Cell cell, double net, Case found) const {
    const SedimentFields& f = in_.fields;
    const double voids = at(found == Case::Erosion ? f.inSituVoids : f.depositionVoids, cell);
    at(f.cellChange, cell) += net * in_.settings.timeStep / in_.parameters.sandGrainDensity /
                              (1.0 - voids) / in_.settings.cellSize;
  }

  const StepInput& in_;
  Axis axis_;
  bool forward_;
  double carried_ = 0.0;  // t
};

}  // namespace

void sweep(const StepInput& in, const Area& area, Axis axis, Direction direction) {
  const bool second = axis == Axis::Second;
  const int lines = second ? area.lastI - area.firstI + 1 : area.lastJ - area.firstJ + 1;
  const int cells = second ? area.lastJ - area.firstJ + 1 : area.lastI - area.firstI + 1;
  for (int line = 0; line < lines; ++line) {
    Walk walk(in, axis, direction);
    const Cell first = moved({area.firstI, area.firstJ}, second ? Axis::First : Axis::Second, line);
    for (int k = 0; k < cells; ++k)
      walk.pass(moved(first, axis, direction == Direction::Forward ? k : cells - 1 - k));
  }
}

}  // namespace nivaro
