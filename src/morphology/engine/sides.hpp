// What the sides of a row of cells need to know of them, and flow and transport at these sides, several at
// once. Lanes run along the first index whatever the axis, since that is how the host's arrays lie.
#pragma once

#include "morphology/cell.hpp"
#include "morphology/engine/capacity.hpp"
#include "morphology/engine/fallback.hpp"
#include "morphology/engine/step_data.hpp"
#include "morphology/engine/strip.hpp"

namespace nivaro {

// Cells of one row: which are active, and their grains. Masks are 0 or -1.
template <class Real>
struct CellRow {
  std::int64_t* active = nullptr;  // and in the area
  std::int64_t* ordinary = nullptr;
  double* stage = nullptr;  // grain terms, as in GrainLanes
  double* suspended = nullptr;
  double* bedLoad = nullptr;
  double* logGrain = nullptr;

  CellRow from(std::ptrdiff_t k) const {
    return {active + k, ordinary + k, stage + k, suspended + k, bedLoad + k, logGrain + k};
  }
};

// Cells of a row, or of a piece of one.
template <class Real, std::ptrdiff_t length>
struct CellRowMemory {
  std::int64_t active[length];
  std::int64_t ordinary[length];
  double stage[length];
  double suspended[length];
  double bedLoad[length];
  double logGrain[length];

  CellRow<Real> row() { return {active, ordinary, stage, suspended, bedLoad, logGrain}; }
};

// Grain terms come in patches, so those of the lanes before mostly serve again.
template <class Real>
struct GrainMemory {
  Real d50{};
  Real d90{};
  GrainLanes<Real> terms{};
  MaskOf<Real> ordinary{};

  explicit GrainMemory(const StepData& step) {
    if (step.uniformGrain)
      compute(load<Real>(step.d50.first), load<Real>(step.d90.first), step.terms);
  }

  [[gnu::always_inline]] bool has(Real otherD50, Real otherD90, MaskOf<Real> needed) const {
    using Word = typename Lanes<Real>::Word;
    const Word differs =
        (as<Word>(d50) ^ as<Word>(otherD50)) | (as<Word>(d90) ^ as<Word>(otherD90));
    return !anyOf<Real>(as<MaskOf<Real>>(differs) & needed);
  }

  void compute(Real newD50, Real newD90, const CapacityTerms& p) {
    d50 = newD50;
    d90 = newD90;
    ordinary = isOrdinaryGrain(d50, d90);
    const Real usual = all<Real>(0.0002);
    terms = grainLanes(ordinary ? d50 : usual, ordinary ? d90 : usual, p);
  }
};

// True when any of the cells is active.
template <class Real>
bool readCells(const StepData& step, std::ptrdiff_t cell, int count, GrainMemory<Real>& grain,
               const CellRow<Real>& out) {
  using Mask = MaskOf<Real>;
  Mask found{};
  for (int k = 0; k < count; k += kLanes<Real>) {
    Mask active = isOdd<Real>(step.bedCode + cell + k, count - k);
    if (anyOf<Real>(active)) active &= isOdd<Real>(step.wet + cell + k, count - k);
    store(out.active + k, active);
    found |= active;
    if (step.uniformGrain) continue;

    if (anyOf<Real>(active)) {
      const Real d50 = load<Real>(step.d50.at(cell + k), count - k);
      const Real d90 = load<Real>(step.d90.at(cell + k), count - k);
      if (!grain.has(d50, d90, active)) grain.compute(d50, d90, step.terms);
    }
    // Sides of active cells are computed for lanes beside them too. What these find here is thrown
    // away, but a slow number would cost time.
    store(out.ordinary + k, grain.ordinary);
    store(out.stage + k, grain.terms.stage);
    store(out.suspended + k, grain.terms.suspended);
    store(out.bedLoad + k, grain.terms.bedLoad);
    store(out.logGrain + k, grain.terms.logGrain);
  }
  return anyOf<Real>(found);
}

template <class Real>
struct SideLanes {
  Real depth;
  Real normal;
  Real tangential;
  MaskOf<Real> open;
};

template <class Real, Axis axis>
struct SideRow {
  using Mask = MaskOf<Real>;
  static constexpr int kCount = kLanes<Real>;

  const StepData& step;
  std::ptrdiff_t below;  // number of the first cell below
  CellRow<Real> cellsBelow;
  CellRow<Real> cellsAbove;
  const GrainMemory<Real>& grain;  // that of all cells where it is uniform
  // From a cell to the one above it, along and across the axis.
  std::ptrdiff_t along = axis == Axis::Second ? step.n : 1;

  const double* normalVelocity() const {
    return axis == Axis::Second ? step.secondVelocity : step.firstVelocity;
  }
  const double* acrossVelocity() const {
    return axis == Axis::Second ? step.firstVelocity : step.secondVelocity;
  }

  // Depth at a side between two wet cells. std::max of the levels and of the depths: a number that
  // is none is one already in the mean.
  [[gnu::always_inline]] Real openDepth(std::ptrdiff_t b, int count) const {
    const Real levelBelow = load<Real>(step.waterLevel + b, count);
    const Real levelAbove = load<Real>(step.waterLevel + b + along, count);
    const double* sides = axis == Axis::Second ? step.secondSideDepth : step.firstSideDepth;
    const Real bed = load<Real>(sides + b, count);
    const Real depth = 0.5 * (levelBelow + levelAbove) + bed;
    if (!step.raiseSideDepth) return depth;
    const Real raised = step.raiseFactor * (atLeast(levelBelow, levelAbove) + bed);
    return atLeast(depth, raised);
  }

  [[gnu::always_inline]] Real openTangential(std::ptrdiff_t b, int count) const {
    const double* v = acrossVelocity() + b + along;
    return 0.25 * (load<Real>(v, count) + load<Real>(v - 1, count) +
                   load<Real>(v - 1 - step.n, count) + load<Real>(v - step.n, count));
  }

  [[gnu::always_inline]] Real cellDepth(std::ptrdiff_t cell, int count) const {
    return load<Real>(step.waterLevel + cell, count) + load<Real>(step.bedDepth + cell, count);
  }

  // Toward a dry cell the flow is that of the wet cell itself, with the velocity of its opposite side.
  // Along the second index one tangential element is taken beyond the side, along the first both are
  // the cell's own.
  void addDryFlow(SideLanes<Real>& flow, std::ptrdiff_t b, Mask wetBelow, Mask wetAbove, int k,
                  int count) const {
    const Mask through = (wetBelow & isOdd<Real>(step.flow + b, count)) |
                         (wetAbove & isOdd<Real>(step.flow + b + along, count));
    const Mask seen = (wetBelow & load<Mask>(cellsBelow.active + k)) |
                      (wetAbove & load<Mask>(cellsAbove.active + k));
    const Mask dry = through & seen;
    if (!anyOf<Real>(dry)) return;

    const std::ptrdiff_t a = b + along;
    const double* across = acrossVelocity();
    const Real atBelow = load<Real>(across + b, count);
    const Real atAbove = load<Real>(across + a, count);
    // Only active cells, which lie in the area, are sure to have a side opposite to this one.
    const bool fromBelow = anyOf<Real>(wetBelow & load<Mask>(cellsBelow.active + k));
    const Real opposite = fromBelow ? load<Real>(normalVelocity() + b - along, count) : Real{};
    const Real normal = wetBelow ? opposite : load<Real>(normalVelocity() + a, count);
    const Real first = wetBelow ? atBelow : atAbove;
    Real other = wetBelow ? atAbove : atBelow;
    if constexpr (axis == Axis::First)
      other = wetBelow ? load<Real>(across + b - step.n, count)
                       : load<Real>(across + a - step.n, count);
    flow.depth = dry ? (wetBelow ? cellDepth(b, count) : cellDepth(a, count)) : flow.depth;
    flow.normal = dry ? normal : flow.normal;
    flow.tangential = dry ? 0.5 * (first + other) : flow.tangential;
  }

  // A side has one flow, even where its cells differ: if only one of them is wet, the other does not
  // look at it.
  [[gnu::always_inline]] SideLanes<Real> flowAt(std::ptrdiff_t b, int k, int count) const {
    const Mask below_ = isOdd<Real>(step.wet + b, count);
    const Mask above_ = isOdd<Real>(step.wet + b + along, count);
    const Mask open = below_ & above_;
    const Real none{};
    SideLanes<Real> flow{open ? openDepth(b, count) : none,
                         open ? load<Real>(normalVelocity() + b, count) : none,
                         open ? openTangential(b, count) : none, open};
    if (anyOf<Real>(below_ ^ above_))
      addDryFlow(flow, b, below_ & ~above_, above_ & ~below_, k, count);
    return flow;
  }

  [[gnu::always_inline]] GrainLanes<Real> grainOf(const CellRow<Real>& cells, int k) const {
    if (step.uniformGrain) return grain.terms;
    return {load<Real>(cells.stage + k), load<Real>(cells.suspended + k),
            load<Real>(cells.bedLoad + k), load<Real>(cells.logGrain + k)};
  }

  // The grains of the cells above; of those below where only these look.
  [[gnu::always_inline]] GrainLanes<Real> grainOfSide(const GrainLanes<Real>& grainBelow,
                                                      int k) const {
    const GrainLanes<Real> grainAbove = grainOf(cellsAbove, k);
    const Mask active = load<Mask>(cellsAbove.active + k);
    return {active ? grainAbove.stage : grainBelow.stage,
            active ? grainAbove.suspended : grainBelow.suspended,
            active ? grainAbove.bedLoad : grainBelow.bedLoad,
            active ? grainAbove.logGrain : grainBelow.logGrain};
  }

  // To the active cells below.
  [[gnu::always_inline]] bool isSameGrain(const GrainLanes<Real>& a, const GrainLanes<Real>& b,
                                          int k) const {
    const Mask differs = hasBits(a.stage - b.stage) | hasBits(a.suspended - b.suspended) |
                         hasBits(a.bedLoad - b.bedLoad) | hasBits(a.logGrain - b.logGrain);
    return !anyOf<Real>(differs & load<Mask>(cellsBelow.active + k));
  }

  static Mask isStill(Real depth, Real speed, const CapacityTerms& p) {
    return (speed < 100.0) & ((speed <= kSmallestSpeed) | (depth <= p.stillDepth));
  }

  // Transports through one side at one velocity, as one or both of its cells see them. Hydraulics are
  // shared; the grain part is as well where the grains are the same.
  struct Speed {
    Real normal;
    Real speed;
    Real perSpeed;
    Mask still;
    Mask ordinary;
    SuspensionLanes<Real> suspension;
  };

  [[gnu::always_inline]] Speed atSpeed(const SideLanes<Real>& flow, const DepthLanes<Real>& depth,
                                       Real normal) const {
    Speed s;
    s.normal = normal;
    const Real square = normal * normal;
    s.speed = squareRoot(flow.tangential * flow.tangential + square);
    s.perSpeed = 1.0 / s.speed;
    s.still = isStill(flow.depth, s.speed, step.terms);
    // A product with a normal velocity that is all but none is 0 or not by the order of operations.
    s.ordinary = (s.speed < 100.0) & (flow.depth < 1e4) & ((square > 1e-200) | (normal == 0.0)) &
                 isTrueEverywhere(step.terms.ordinary);
    s.suspension = suspensionLanes(depth, s.speed, s.perSpeed, step.terms);
    return s;
  }

  static Mask isTrueEverywhere(bool value) { return value ? ~Mask{} : Mask{}; }

  // Before the lanes that are not ordinary are replaced.
  [[gnu::always_inline]] CapacityLanes<Real> resolved(const DepthLanes<Real>& depth, const Speed& s,
                                                      const GrainLanes<Real>& sand) const {
    const CapacityLanes<Real> q = capacityLanes(depth, s.suspension, s.speed, sand);
    const Real direction = s.normal * s.perSpeed;
    const Real none{};
    return {s.still ? none : q.suspended * direction, s.still ? none : q.bedLoad * direction,
            s.still | (s.ordinary & q.ordinary)};
  }

  // What active cells see; the plain function serves lanes that are not ordinary.
  CapacityLanes<Real> seenFrom(Mask active, Mask ordinaryGrain, std::ptrdiff_t cell,
                               CapacityLanes<Real> q, const SideLanes<Real>& flow,
                               const Speed& s) const {
    const Mask ordinary = q.ordinary & (s.still | ordinaryGrain);
    const Mask plain = active & ~ordinary;
    if (!anyOf<Real>(plain)) return q;
    for (int lane = 0; lane < kCount; ++lane) {
      if (plain[lane] == 0) continue;
      const SideTransport transport =
          plainTransport(step, cell + lane, {flow.depth[lane], s.speed[lane], s.normal[lane]});
      q.suspended[lane] = transport.suspended;
      q.bedLoad[lane] = transport.bedLoad;
    }
    return q;
  }

  CapacityLanes<Real> seenFrom(const CellRow<Real>& cells, std::ptrdiff_t cell, int k,
                               const CapacityLanes<Real>& q, const SideLanes<Real>& flow,
                               const Speed& s) const {
    const Mask ordinary = step.uniformGrain ? grain.ordinary : load<Mask>(cells.ordinary + k);
    return seenFrom(load<Mask>(cells.active + k), ordinary, cell, q, flow, s);
  }

  Real centredNormal(const SideLanes<Real>& flow, std::ptrdiff_t cell, int count) const {
    return flow.open ? flow.normal * flow.depth / cellDepth(cell, count) : flow.normal;
  }

  // What both cells see at the flow as it is.
  struct BothSeen {
    CapacityLanes<Real> above;
    CapacityLanes<Real> below;
  };

  [[gnu::always_inline]] BothSeen seenAt(const Speed& s, const SideLanes<Real>& flow,
                                         const DepthLanes<Real>& depth, int k) const {
    const std::ptrdiff_t b = below + k;
    if (step.uniformGrain) {
      const Mask active = load<Mask>(cellsBelow.active + k) | load<Mask>(cellsAbove.active + k);
      const CapacityLanes<Real> seen =
          seenFrom(active, grain.ordinary, b, resolved(depth, s, grain.terms), flow, s);
      return {seen, seen};
    }
    const GrainLanes<Real> grainBelow = grainOf(cellsBelow, k);
    const GrainLanes<Real> grainAbove = grainOfSide(grainBelow, k);
    const CapacityLanes<Real> above = resolved(depth, s, grainAbove);
    const CapacityLanes<Real> below_ =
        isSameGrain(grainBelow, grainAbove, k) ? above : resolved(depth, s, grainBelow);
    return {seenFrom(cellsAbove, b + along, k, above, flow, s),
            seenFrom(cellsBelow, b, k, below_, flow, s)};
  }

  [[gnu::always_inline]] void computeOne(int k, int count, const SideArrays& sides,
                                         std::ptrdiff_t element, const BedLoadArrays& bed) const {
    const Mask needed = load<Mask>(cellsBelow.active + k) | load<Mask>(cellsAbove.active + k);
    if (!anyOf<Real>(needed)) return;

    const std::ptrdiff_t e = element + k;
    const SideLanes<Real> flow = flowAt(below + k, k, count);
    // Depths that are not ordinary are replaced, so that no lane meets a slow number.
    const Mask deep = (flow.depth > step.terms.stillDepth) & (flow.depth < 1e4);
    const DepthLanes<Real> depth =
        depthLanes(deep ? flow.depth : all<Real>(2.0 * step.terms.stillDepth), step.terms);
    const BothSeen seen = seenAt(atSpeed(flow, depth, flow.normal), flow, depth, k);
    store(sides.suspendedAbove + e, seen.above.suspended);
    store(sides.suspendedBelow + e, seen.below.suspended);
    store(sides.discharge + e, flow.normal * flow.depth);
    store(bed.above + k, seen.above.bedLoad);
    store(bed.below + k, seen.below.bedLoad);
    if (step.parameters.velocityCentred) computeCentred(k, count, sides, e, bed, flow, depth);
  }

  [[gnu::always_inline]] void computeCentred(int k, int count, const SideArrays& sides,
                                             std::ptrdiff_t e, const BedLoadArrays& bed,
                                             const SideLanes<Real>& flow,
                                             const DepthLanes<Real>& depth) const {
    const std::ptrdiff_t b = below + k;
    const std::ptrdiff_t a = b + along;
    const Speed reverse = atSpeed(flow, depth, centredNormal(flow, a, count));
    const CapacityLanes<Real> down =
        seenFrom(cellsAbove, a, k, resolved(depth, reverse, grainOf(cellsAbove, k)), flow, reverse);
    store(sides.centredSuspendedAbove + e, down.suspended);
    store(sides.centredDischargeAbove + e, reverse.normal * flow.depth);

    const Speed forward = atSpeed(flow, depth, centredNormal(flow, b, count));
    const CapacityLanes<Real> up =
        seenFrom(cellsBelow, b, k, resolved(depth, forward, grainOf(cellsBelow, k)), flow, forward);
    store(sides.centredSuspendedBelow + e, up.suspended);
    store(sides.centredDischargeBelow + e, forward.normal * flow.depth);
    store(bed.below + k, up.bedLoad);
  }

  // The side arrays are written from an element on.
  void compute(int count, const SideArrays& sides, std::ptrdiff_t element,
               const BedLoadArrays& bed) const {
    for (int k = 0; k < count; k += kCount) computeOne(k, count - k, sides, element, bed);
  }
};

}  // namespace nivaro
