// The transport of one axis: strip after strip, sides first, then both sweeps, then the bed.
#pragma once

#include "morphology/carry_lanes.hpp"
#include "morphology/side_lanes.hpp"

namespace nivaro {

// Cells and sides of a row are worked on in pieces of this length, which stay in the nearest cache
// while the lines along the first index are turned into lanes.
constexpr std::ptrdiff_t kPiece = 64;
constexpr std::ptrdiff_t kRowMemory = kPiece + 16;  // and what lanes may read beyond it

template <class Real>
struct CellRowMemory {
  std::int64_t active[kRowMemory];
  std::int64_t ordinary[kRowMemory];
  double stage[kRowMemory];
  double suspended[kRowMemory];
  double bedLoad[kRowMemory];
  double logGrain[kRowMemory];

  CellRow<Real> row() { return {active, ordinary, stage, suspended, bedLoad, logGrain}; }
};

template <class Real>
void putFlags(const StepData& step, std::ptrdiff_t cell, int count, const std::int64_t* active,
              std::int64_t* flags) {
  using Mask = MaskOf<Real>;
  for (int k = 0; k < count; k += kLanes<Real>) {
    const Mask limited = -load<Real>(step.bedDepth + cell + k, count - k) <=
                         load<Real>(step.bedLimit + cell + k, count - k);
    store(flags + k, load<Mask>(active + k) & ((limited & kAtBedLimit) | kActiveCell));
  }
}

// What the sweeps left in a row of cells, row by row of the host's arrays.
struct ExchangeRow {
  const double* forward = nullptr;
  const double* reverse = nullptr;
  const double* concentration = nullptr;
  const double* adaptation = nullptr;
  const std::int64_t* outcome = nullptr;
  const double* bedLoadIn = nullptr;   // through the lower sides
  const double* bedLoadOut = nullptr;  // through the upper sides
};

// Bed load counts once, in the forward sweep and with its voids.
template <class Real>
void changeBed(const StepData& step, std::ptrdiff_t cell, int count, const ExchangeRow& row) {
  using Mask = MaskOf<Real>;
  for (int k = 0; k < count; k += kLanes<Real>) {
    const std::ptrdiff_t c = cell + k;
    const int left = count - k;
    const Mask active = isOdd<Real>(step.bedCode + c, left) & isOdd<Real>(step.wet + c, left);
    if (!anyOf<Real>(active)) continue;

    const Mask outcome = load<Mask>(row.outcome + k);
    const Real inSitu = load<Real>(step.inSituVoids + c, left);
    const Real fresh = load<Real>(step.depositionVoids + c, left);
    const auto level = [&](Real net, std::int64_t erosion) {
      return net * step.levelFactor / (1.0 - ((outcome & erosion) != 0 ? inSitu : fresh));
    };
    const Real bedLoad = load<Real>(row.bedLoadIn + k) - load<Real>(row.bedLoadOut + k);
    const Real before = load<Real>(step.change + c, left);
    const Real after = (before + level(bedLoad + load<Real>(row.forward + k), kForwardErosion)) +
                       level(load<Real>(row.reverse + k), kReverseErosion);
    store(step.change + c, active ? after : before, left);

    const Mask settled = active & ((outcome & kSettled) != 0);
    if (!anyOf<Real>(settled)) continue;
    const auto keep = [&](double* field, const double* value) {
      store(field + c, settled ? load<Real>(value + k) : load<Real>(field + c, left), left);
    };
    keep(step.concentration, row.concentration);
    keep(step.adaptation, row.adaptation);
  }
}

template <class Real>
int smaller(std::ptrdiff_t a, std::ptrdiff_t b) {
  return static_cast<int>(a < b ? a : b);
}

template <class Real, std::ptrdiff_t lines>
void carryBothWays(const StepData& step, const StripArrays& strip, std::ptrdiff_t positions) {
  const Carry<Real, lines> carry{step, strip};
  carry.carryForward(positions);
  carry.carryReverse(positions);
}

// Lines along the second index lie side by side in memory: a row of the grid is a row of the strip.
template <class Real>
struct SecondAxis {
  const StepData& step;
  const StripArrays& strip;
  std::ptrdiff_t positions = step.lastJ - step.firstJ + 1;

  static constexpr std::ptrdiff_t kRow = kSecondStripLines;

  SideArrays sidesOf(std::ptrdiff_t side) const {
    SideArrays s = strip.sides;
    for (double** a :
         {&s.suspendedAbove, &s.suspendedBelow, &s.discharge, &s.centredSuspendedAbove,
          &s.centredDischargeAbove, &s.centredSuspendedBelow, &s.centredDischargeBelow})
      *a += side * kRow;
    return s;
  }

  template <class Element>
  static void announce(const Element* piece) {
    for (std::ptrdiff_t k = 0; k < kSecondStripLines; k += 64 / sizeof(Element))
      __builtin_prefetch(piece + k);
  }

  // Rows of a large grid lie pages apart, where no processor looks ahead by itself.
  static constexpr std::ptrdiff_t kLookAhead = 8;

  void announceSides(std::ptrdiff_t j, std::ptrdiff_t i) const {
    if (j + kLookAhead > step.lastJ) return;
    const std::ptrdiff_t at = (j + kLookAhead - 1) * step.n + i - 1;
    for (const std::int32_t* array : {step.bedCode, step.wet}) announce(array + at);
    for (const double* array :
         {step.waterLevel, step.firstVelocity, step.secondVelocity, step.secondSideDepth,
          step.bedDepth, step.bedLimit, step.d50, step.d90})
      announce(array + at);
  }

  void announceBeds(std::ptrdiff_t j, std::ptrdiff_t i) const {
    if (j + kLookAhead > step.lastJ) return;
    const std::ptrdiff_t at = (j + kLookAhead - 1) * step.n + i - 1;
    for (const std::int32_t* array : {step.bedCode, step.wet}) announce(array + at);
    for (const double* array : {step.inSituVoids, step.depositionVoids}) announce(array + at);
    for (const double* array : {step.change, step.concentration, step.adaptation})
      announce(array + at);
  }

  // Returns whether any cell of the strip is active.
  bool computeSides(std::ptrdiff_t firstI, int count) const {
    CellRowMemory<Real> memory[2] = {};
    GrainMemory<Real> grain[kSecondStripLines / kLanes<Real>];
    bool any = false;
    for (std::ptrdiff_t side = 0; side <= positions; ++side) {
      const CellRow<Real> below = memory[side % 2].row();
      const CellRow<Real> above = memory[(side + 1) % 2].row();
      const std::ptrdiff_t cell = (step.firstJ - 1 + side) * step.n + firstI - 1;
      bool active = false;
      announceSides(step.firstJ + side, firstI);
      if (side < positions) {
        for (int k = 0, g = 0; k < count; k += kLanes<Real>, ++g)
          active |= readCells<Real>(step, cell + k, smaller<Real>(count - k, kLanes<Real>),
                                    grain[g], above.from(k));
        strip.rowActive[side] = active;
        if (active) putFlags<Real>(step, cell, count, above.active, strip.flags + side * kRow);
      } else {
        for (std::ptrdiff_t k = 0; k < kSecondStripLines; ++k) above.active[k] = 0;
      }
      any |= active;
      if (!active && (side == 0 || !strip.rowActive[side - 1])) continue;
      SideRow<Real, Axis::Second>{step, cell - step.n, below, above}.compute(
          count, sidesOf(side),
          {strip.bedLoad.above + side * kRow, strip.bedLoad.below + side * kRow});
    }
    return any;
  }

  void changeBeds(std::ptrdiff_t firstI, int count) const {
    for (std::ptrdiff_t position = 0; position < positions; ++position) {
      if (!strip.rowActive[position]) continue;
      const std::ptrdiff_t at = position * kRow;
      announceBeds(step.firstJ + position, firstI);
      changeBed<Real>(
          step, (step.firstJ - 1 + position) * step.n + firstI - 1, count,
          {strip.forward + at, strip.reverse + at, strip.concentration + at, strip.adaptation + at,
           strip.outcome + at, strip.bedLoad.above + at, strip.bedLoad.below + at + kRow});
    }
  }

  void addTransport() const {
    for (std::ptrdiff_t i = step.firstI; i <= step.lastI; i += kSecondStripLines) {
      const int count = smaller<Real>(step.lastI - i + 1, kSecondStripLines);
      if (!computeSides(i, count)) continue;
      carryBothWays<Real, kSecondStripLines>(step, strip, positions);
      changeBeds(i, count);
    }
  }
};

// Turns rows of a piece into lanes of a strip and back.
template <class Element>
void turnIntoLanes(const Element* rows, std::ptrdiff_t count, Element* strip) {
  for (std::ptrdiff_t k = 0; k < count; ++k)
    for (std::ptrdiff_t line = 0; line < kFirstStripLines; ++line)
      strip[k * kFirstStripLines + line] = rows[line * kRowMemory + k];
}

template <class Element>
void turnIntoRows(const Element* strip, std::ptrdiff_t count, Element* rows) {
  for (std::ptrdiff_t line = 0; line < kFirstStripLines; ++line)
    for (std::ptrdiff_t k = 0; k < count; ++k)
      rows[line * kRowMemory + k] = strip[k * kFirstStripLines + line];
}

// Lines along the first index are rows of the grid. Sides are computed along the rows and turned,
// what the sweeps leave is turned back; bed load is not carried and stays in rows.
template <class Real>
struct FirstAxis {
  using Piece = double[kFirstStripLines * kRowMemory];
  struct Memory {
    CellRowMemory<Real> cells;
    Piece side[7];
    std::int64_t flags[kFirstStripLines * kRowMemory];
  };

  const StepData& step;
  const StripArrays& strip;
  Memory& memory;
  std::ptrdiff_t positions = step.lastI - step.firstI + 1;
  std::ptrdiff_t row = positions + kPiece;  // length of a row of bed loads

  std::ptrdiff_t cellAt(std::ptrdiff_t j, std::ptrdiff_t position) const {
    return (j - 1) * step.n + step.firstI - 1 + position;
  }

  // Sides first .. first + count - 1 of one line, with the cells around them.
  bool computeLine(std::ptrdiff_t j, std::ptrdiff_t line, std::ptrdiff_t first, int count) const {
    const CellRow<Real> cells = memory.cells.row();
    GrainMemory<Real> grain;
    const std::ptrdiff_t below = cellAt(j, first - 1);
    bool active = readCells<Real>(step, below, count + 1, grain, cells);
    const std::ptrdiff_t line0 = line * kRowMemory;
    std::int64_t* flags = memory.flags + line0;
    if (!active) {
      for (int k = 0; k < count; ++k) flags[k] = 0;
      return false;
    }
    // Cells outside the area take no part; neither do lanes beyond the row.
    if (first == 0) cells.active[0] = 0;
    if (first + count - 1 == positions) cells.active[count] = 0;
    for (int k = count + 1; k < count + 1 + kLanes<Real>; ++k) cells.active[k] = 0;

    putFlags<Real>(step, below + 1, count, cells.active + 1, flags);
    const SideArrays sides{memory.side[0] + line0, memory.side[1] + line0, memory.side[2] + line0,
                           memory.side[3] + line0, memory.side[4] + line0, memory.side[5] + line0,
                           memory.side[6] + line0};
    const std::ptrdiff_t bed = line * row + first;
    SideRow<Real, Axis::First>{step, below, cells, cells.from(1)}.compute(
        count, sides, {strip.bedLoad.above + bed, strip.bedLoad.below + bed});
    return true;
  }

  void turnSides(std::ptrdiff_t first, int count) const {
    const std::ptrdiff_t at = first * kFirstStripLines;
    const SideArrays& s = strip.sides;
    turnIntoLanes(memory.flags, count, strip.flags + at);
    turnIntoLanes(memory.side[0], count, s.suspendedAbove + at);
    turnIntoLanes(memory.side[1], count, s.suspendedBelow + at);
    turnIntoLanes(memory.side[2], count, s.discharge + at);
    if (!step.parameters.velocityCentred) return;
    turnIntoLanes(memory.side[3], count, s.centredSuspendedAbove + at);
    turnIntoLanes(memory.side[4], count, s.centredDischargeAbove + at);
    turnIntoLanes(memory.side[5], count, s.centredSuspendedBelow + at);
    turnIntoLanes(memory.side[6], count, s.centredDischargeBelow + at);
  }

  bool computeSides(std::ptrdiff_t firstJ, int lines) const {
    bool any = false;
    for (std::ptrdiff_t first = 0; first <= positions; first += kPiece) {
      const int count = smaller<Real>(positions + 1 - first, kPiece);
      bool active = false;
      for (int line = 0; line < lines; ++line)
        active |= computeLine(firstJ + line, line, first, count);
      for (std::ptrdiff_t k = 0; k < count; ++k) strip.rowActive[first + k] = active;
      any |= active;
      if (!active) continue;
      for (std::ptrdiff_t k = lines * kRowMemory; k < kFirstStripLines * kRowMemory; ++k)
        memory.flags[k] = 0;
      turnSides(first, count);
    }
    return any;
  }

  void changeBeds(std::ptrdiff_t firstJ, int lines) const {
    for (std::ptrdiff_t first = 0; first < positions; first += kPiece) {
      if (!strip.rowActive[first]) continue;
      const int count = smaller<Real>(positions - first, kPiece);
      const std::ptrdiff_t at = first * kFirstStripLines;
      turnIntoRows(strip.forward + at, count, memory.side[0]);
      turnIntoRows(strip.reverse + at, count, memory.side[1]);
      turnIntoRows(strip.concentration + at, count, memory.side[2]);
      turnIntoRows(strip.adaptation + at, count, memory.side[3]);
      turnIntoRows(strip.outcome + at, count, memory.flags);
      for (int line = 0; line < lines; ++line) {
        const std::ptrdiff_t line0 = line * kRowMemory;
        const std::ptrdiff_t bed = line * row + first;
        changeBed<Real>(step, cellAt(firstJ + line, first), count,
                        {memory.side[0] + line0, memory.side[1] + line0, memory.side[2] + line0,
                         memory.side[3] + line0, memory.flags + line0, strip.bedLoad.above + bed,
                         strip.bedLoad.below + bed + 1});
      }
    }
  }

  void addTransport() const {
    for (std::ptrdiff_t j = step.firstJ; j <= step.lastJ; j += kFirstStripLines) {
      const int lines = smaller<Real>(step.lastJ - j + 1, kFirstStripLines);
      if (!computeSides(j, lines)) continue;
      carryBothWays<Real, kFirstStripLines>(step, strip, positions);
      changeBeds(j, lines);
    }
  }
};

template <class Real>
void addTransportLanes(const StepData& step, const StripArrays& strip) {
  SecondAxis<Real>{step, strip}.addTransport();
  typename FirstAxis<Real>::Memory memory{};
  FirstAxis<Real>{step, strip, memory}.addTransport();
}

}  // namespace nivaro
