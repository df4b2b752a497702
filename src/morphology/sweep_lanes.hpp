// The transport of one axis, strip by strip: sides and the forward sweep on the way up, cells a side
// behind, and the reverse sweep on the way back. The bed is changed by each as it passes.
#pragma once

#include "morphology/bed_lanes.hpp"
#include "morphology/carry_lanes.hpp"
#include "morphology/side_lanes.hpp"

namespace nivaro {

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

template <class Real>
void putFlags(const StepData& step, std::ptrdiff_t cell, int count, const std::int64_t* active,
              std::int64_t* flags) {
  using Mask = MaskOf<Real>;
  const Mask finite = step.levelFactor - step.levelFactor == 0.0 ? ~Mask{} : Mask{};
  for (int k = 0; k < count; k += kLanes<Real>) {
    const std::ptrdiff_t c = cell + k;
    const int left = count - k;
    const Mask limited =
        -load<Real>(step.bedDepth + c, left) <= load<Real>(step.bedLimit.at(c), left);
    const Real inSitu = load<Real>(step.inSituVoids.at(c), left);
    const Real fresh = load<Real>(step.depositionVoids.at(c), left);
    const Mask plain = finite & ((inSitu < 1.0) | (inSitu > 1.0)) & ((fresh < 1.0) | (fresh > 1.0));
    store(flags + k,
          load<Mask>(active + k) & ((limited & kAtBedLimit) | (plain & kPlainVoids) | kActiveCell));
  }
}

// The level changes of a row of cells by one sweep.
template <class Real>
struct RowChange {
  using Mask = MaskOf<Real>;

  const StepData& step;
  std::ptrdiff_t cell;
  int count;
  const std::int64_t* flags;
  Exchange exchange;

  [[gnu::always_inline]] Mask activeAt(int k) const {
    return hasBit<Real>(load<Mask>(flags + k), kActiveCell);
  }

  [[gnu::always_inline]] Real levelOf(Real net, int k) const {
    const Mask erosion = hasBit<Real>(load<Mask>(exchange.outcome + k), kErosion);
    const Real voids = erosion ? load<Real>(step.inSituVoids.at(cell + k), count - k)
                               : load<Real>(step.depositionVoids.at(cell + k), count - k);
    return net * step.levelFactor / (1.0 - voids);
  }

  [[gnu::always_inline]] void keepSettling(int k, Mask active) const {
    const Mask settled = active & hasBit<Real>(load<Mask>(exchange.outcome + k), kSettled);
    if (!anyOf<Real>(settled)) return;
    const auto keep = [&](double* field, const double* value) {
      double* const at = field + cell + k;
      store(at, settled ? load<Real>(value + k) : load<Real>(at, count - k), count - k);
    };
    keep(step.concentration, exchange.concentration);
    keep(step.adaptation, exchange.adaptation);
  }

  // Bed load counts once, in the forward sweep and with its voids. `in` and `out` are those through
  // the lower and the upper sides.
  [[gnu::always_inline]] Real forwardNet(const double* in, const double* out, int k) const {
    return load<Real>(in + k) - load<Real>(out + k) + load<Real>(exchange.net + k);
  }

  // The first sweep of a step over these cells, which finds them as the last step left them.
  void setForward(const double* in, const double* out) const {
    for (int k = 0; k < count; k += kLanes<Real>) {
      const Real none{};
      const Mask active = activeAt(k);
      const Mask settled = active & hasBit<Real>(load<Mask>(exchange.outcome + k), kSettled);
      const Real level = none + levelOf(forwardNet(in, out, k), k);
      const auto set = [this, k](double* field, Real value) {
        store(field + cell + k, value, count - k);
      };
      set(step.change, active ? level : none);
      set(step.concentration, settled ? load<Real>(exchange.concentration + k) : none);
      set(step.adaptation, settled ? load<Real>(exchange.adaptation + k) : none);
    }
  }

  void addForward(const double* in, const double* out) const {
    for (int k = 0; k < count; k += kLanes<Real>) {
      const Mask active = activeAt(k);
      if (!anyOf<Real>(active)) continue;
      double* const change = step.change + cell + k;
      const Real before = load<Real>(change, count - k);
      const Real net = forwardNet(in, out, k);
      store(change, active ? before + levelOf(net, k) : before, count - k);
      keepSettling(k, active);
    }
  }

  void addReverse() const {
    for (int k = 0; k < count; k += kLanes<Real>) {
      const Mask active = activeAt(k);
      const Real net = load<Real>(exchange.net + k);
      const Mask outcome = load<Mask>(exchange.outcome + k);
      const Mask plain = hasBit<Real>(load<Mask>(flags + k), kPlainVoids);
      if (!anyOf<Real>(active & ((outcome != 0) | ~plain))) continue;
      double* const change = step.change + cell + k;
      const Real before = load<Real>(change, count - k);
      store(change, active ? before + levelOf(net, k) : before, count - k);
      keepSettling(k, active);
    }
  }
};

// Lines along the second index, one in each lane: they lie side by side in the rows of the grid. Several
// such columns make a strip.
template <class Real>
class Column {
 public:
  Column(const StepData& step, const StripArrays& strip, std::ptrdiff_t firstI, std::ptrdiff_t lane)
      : step_(step),
        strip_(strip),
        firstI_(firstI + lane),
        lane_(lane),
        count_(smaller<Real>(step.lastI - firstI_ + 1, kLanes<Real>)) {}

  // Computes a side and carries the sand through the cells below it.
  void walkUp(std::ptrdiff_t side) {
    const CellRow<Real> below = cells_[side % 2].row();
    const CellRow<Real> above = cells_[(side + 1) % 2].row();
    const bool activeBelow = active_;
    if (!activeBelow) store(below.active, MaskOf<Real>{});
    active_ = readAbove(above, side);
    if (active_ || activeBelow) {
      SideRow<Real, Axis::Second>{step_, cellAt(side - 1), below, above}.compute(
          count_, strip_.sides, elementAt(side),
          {bedLoadAbove_[side % 2], bedLoadBelow_[side % 2]});
    }
    if (activeBelow) {
      ExchangeMemory memory;
      carried_ = carry().forward(elementAt(side - 1), carried_, memory.exchange(), 0);
      changeOf(side - 1, memory).setForward(bedLoadAbove_[(side + 1) % 2], bedLoadBelow_[side % 2]);
    } else if (side > 0) {
      clearRow(side - 1);
    }
  }

  void turn() { carried_ = Real{}; }

  void walkDown(std::ptrdiff_t position) {
    if (!anyOf<Real>(load<MaskOf<Real>>(strip_.flags + elementAt(position)))) return;
    MaskOf<Real> touched{};
    ExchangeMemory memory;
    carried_ = carry().reverse(elementAt(position), carried_, memory.exchange(), 0, touched);
    if (anyOf<Real>(touched)) changeOf(position, memory).addReverse();
  }

 private:
  std::ptrdiff_t cellAt(std::ptrdiff_t position) const {
    return (step_.firstJ - 1 + position) * step_.n + firstI_ - 1;
  }
  std::ptrdiff_t elementAt(std::ptrdiff_t position) const {
    return position * strip_.stride + lane_;
  }

  Carry<Real> carry() const { return {step_, strip_.sides, strip_.flags, strip_.stride}; }

  struct ExchangeMemory {
    double net[kLanes<Real>];
    double concentration[kLanes<Real>] = {};
    double adaptation[kLanes<Real>] = {};
    std::int64_t outcome[kLanes<Real>];

    Exchange exchange() { return {net, concentration, adaptation, outcome}; }
  };

  RowChange<Real> changeOf(std::ptrdiff_t position, ExchangeMemory& memory) const {
    return {step_, cellAt(position), count_, strip_.flags + elementAt(position), memory.exchange()};
  }

  // Whether any cell above the side is active. Those above the last one are outside the area.
  bool readAbove(const CellRow<Real>& cells, std::ptrdiff_t side) {
    if (side < positions_) {
      const bool active = readCells<Real>(step_, cellAt(side), count_, grain_, cells);
      std::int64_t* const flags = strip_.flags + elementAt(side);
      if (active)
        putFlags<Real>(step_, cellAt(side), count_, cells.active, flags);
      else
        store(flags, MaskOf<Real>{});
      return active;
    }
    store(cells.active, MaskOf<Real>{});
    return false;
  }

  void clearRow(std::ptrdiff_t position) const {
    for (double* field : {step_.change, step_.concentration, step_.adaptation})
      clearCells<Real>(field + cellAt(position), count_);
  }

  const StepData& step_;
  const StripArrays& strip_;
  std::ptrdiff_t firstI_;
  std::ptrdiff_t lane_;
  int count_;
  std::ptrdiff_t positions_ = step_.lastJ - step_.firstJ + 1;

  bool active_ = false;  // any of the cells above the latest side
  Real carried_{};
  GrainMemory<Real> grain_;
  CellRowMemory<Real, kLanes<Real>> cells_[2] = {};
  double bedLoadAbove_[2][kLanes<Real>] = {};
  double bedLoadBelow_[2][kLanes<Real>] = {};
};

// The columns of a strip walk side by side, so that cache lines are used while they are at hand.
template <class Real, int... number>
void sweepColumns(const StepData& step, const StripArrays& strip, std::ptrdiff_t firstI,
                  std::integer_sequence<int, number...>) {
  Column<Real> columns[] = {Column<Real>(step, strip, firstI, number * kLanes<Real>)...};
  const int lines = smaller<Real>(step.lastI - firstI + 1, kSecondStripLines);
  const int count = (lines + kLanes<Real> - 1) / kLanes<Real>;
  const std::ptrdiff_t positions = step.lastJ - step.firstJ + 1;
  const std::ptrdiff_t firstBlock = (firstI - step.firstI) / kBlock;
  constexpr int together = static_cast<int>(kBlock) / kLanes<Real>;
  const auto carries = [&step, positions, firstBlock](std::ptrdiff_t row, int c) {
    return row >= 0 && row < positions &&
           step.map.has(row, firstBlock + c / together, kCarriesSand);
  };
  // Calls `walk` for the columns of a block.
  const auto forColumns = [&columns, count](int c, const auto& walk) {
    for (int last = smaller<Real>(count, c + together); c < last; ++c) walk(columns[c]);
  };
  for (std::ptrdiff_t side = 0; side <= positions; ++side)
    for (int c = 0; c < count; c += together)
      if (carries(side, c) || carries(side - 1, c))
        forColumns(c, [side](Column<Real>& column) { column.walkUp(side); });
  for (int c = 0; c < count; ++c) columns[c].turn();
  for (std::ptrdiff_t row = positions; row-- > 0;)
    for (int c = 0; c < count; c += together)
      if (carries(row, c)) forColumns(c, [row](Column<Real>& column) { column.walkDown(row); });
}

template <class Real>
void sweepSecondAxis(const StepData& step, const StripArrays& strip, std::ptrdiff_t firstI) {
  sweepColumns<Real>(step, strip, firstI,
                     std::make_integer_sequence<int, kSecondStripLines / kLanes<Real>>{});
}

// Turns rows of a piece into lanes of a strip and back, in square blocks; the last ones reach beyond
// the piece.
template <class Real, class Element>
void turnIntoLanes(const Element* rows, std::ptrdiff_t count, Element* strip) {
  for (std::ptrdiff_t line = 0; line < kFirstStripLines; line += kLanes<Real>)
    for (std::ptrdiff_t k = 0; k < count; k += kLanes<Real>) {
      Real block[kLanes<Real>];
      for (int row = 0; row < kLanes<Real>; ++row)
        block[row] = load<Real>(rows + (line + row) * kPieceMemory + k);
      transpose(block);
      for (int row = 0; row < kLanes<Real>; ++row)
        store(strip + (k + row) * kFirstStripLines + line, block[row]);
    }
}

template <class Real, class Element>
void turnIntoRows(const Element* strip, std::ptrdiff_t count, Element* rows) {
  for (std::ptrdiff_t line = 0; line < kFirstStripLines; line += kLanes<Real>)
    for (std::ptrdiff_t k = 0; k < count; k += kLanes<Real>) {
      Real block[kLanes<Real>];
      for (int row = 0; row < kLanes<Real>; ++row)
        block[row] = load<Real>(strip + (k + row) * kFirstStripLines + line);
      transpose(block);
      for (int row = 0; row < kLanes<Real>; ++row)
        store(rows + (line + row) * kPieceMemory + k, block[row]);
    }
}

// Lines along the first index are rows of the grid. Sides are computed along the rows and turned,
// what the sweeps leave is turned back; bed load is not carried and stays in rows. A piece is sides
// first .. first + count - 1 and the cells below them.
template <class Real>
struct FirstAxis {
  static constexpr std::ptrdiff_t kLines = kFirstStripLines;
  using StripCarry = Carry<Real>;

  const StepData& step;
  const StripArrays& strip;
  std::ptrdiff_t firstJ;
  std::ptrdiff_t positions = step.lastI - step.firstI + 1;
  int lines = smaller<Real>(step.lastJ - firstJ + 1, kLines);

  std::ptrdiff_t cellAt(std::ptrdiff_t line, std::ptrdiff_t position) const {
    return (firstJ - 1 + line) * step.n + step.firstI - 1 + position;
  }

  int countOf(std::ptrdiff_t first) const { return smaller<Real>(positions + 1 - first, kPiece); }

  // The sides of one line, with the cells around them. Whether any of these is active.
  bool computeLine(GrainMemory<Real>& grain, std::ptrdiff_t line, std::ptrdiff_t first) const {
    CellRowMemory<Real, kPieceMemory> memory;
    const CellRow<Real> cells = memory.row();
    const int count = countOf(first);
    const std::ptrdiff_t below = cellAt(line, first - 1);
    const std::ptrdiff_t row = line * kPieceMemory;
    PieceMemory& piece = *strip.piece;
    if (!readCells<Real>(step, below, count + 1, grain, cells)) {
      for (int k = 0; k < count; ++k) piece.flags[row + k] = 0;
      return false;
    }
    // Cells outside the area take no part; neither do lanes beyond the row.
    if (first == 0) cells.active[0] = 0;
    if (first + count - 1 == positions) cells.active[count] = 0;
    for (int k = count + 1; k < count + 1 + kLanes<Real>; ++k) cells.active[k] = 0;

    putFlags<Real>(step, below, count, cells.active, piece.flags + row);
    auto& s = piece.side;
    SideRow<Real, Axis::First>{step, below, cells, cells.from(1)}.compute(
        count, {s[0], s[1], s[2], s[3], s[4], s[5], s[6]}, row,
        {piece.bedLoadAbove + row + 1, piece.bedLoadBelow + row + 1});
    return true;
  }

  void turnSides(std::ptrdiff_t first) const {
    const int count = countOf(first);
    const std::ptrdiff_t at = first * kLines;
    const PieceMemory& piece = *strip.piece;
    const SideArrays& s = strip.sides;
    turnIntoLanes<Real>(piece.flags, count, strip.flags + at - kLines);
    turnIntoLanes<Real>(piece.side[0], count, s.suspendedAbove + at);
    if (!step.uniformGrain) turnIntoLanes<Real>(piece.side[1], count, s.suspendedBelow + at);
    turnIntoLanes<Real>(piece.side[2], count, s.discharge + at);
    if (!step.parameters.velocityCentred) return;
    turnIntoLanes<Real>(piece.side[3], count, s.centredSuspendedAbove + at);
    turnIntoLanes<Real>(piece.side[4], count, s.centredDischargeAbove + at);
    turnIntoLanes<Real>(piece.side[5], count, s.centredSuspendedBelow + at);
    turnIntoLanes<Real>(piece.side[6], count, s.centredDischargeBelow + at);
  }

  bool carries(std::ptrdiff_t line, std::ptrdiff_t block) const {
    return block >= 0 && block < step.map.perRow &&
           step.map.has(firstJ - step.firstJ + line, block, kCarriesSand);
  }

  // Whether any cell of the piece is active: pieces are blocks, with a cell of the block before.
  bool computeSides(GrainMemory<Real>& grain, std::ptrdiff_t first) const {
    const std::ptrdiff_t block = first / kPiece;
    bool some = false;
    for (int line = 0; line < lines; ++line)
      some |= carries(line, block) || carries(line, block - 1);
    if (!some) return false;
    bool active = false;
    for (int line = 0; line < lines; ++line) active |= computeLine(grain, line, first);
    if (!active) return false;
    for (std::ptrdiff_t k = lines * kPieceMemory; k < kLines * kPieceMemory; ++k)
      strip.piece->flags[k] = 0;
    turnSides(first);
    return true;
  }

  Exchange lanesOfExchange() const {
    PieceMemory& piece = *strip.piece;
    return {piece.net, piece.concentration, piece.adaptation, piece.outcome};
  }

  // The sides of the piece have gone to the strip by now, their memory serves again.
  void turnExchange(int count) const {
    PieceMemory& piece = *strip.piece;
    turnIntoRows<Real>(piece.net, count, piece.side[0]);
    turnIntoRows<Real>(piece.concentration, count, piece.side[1]);
    turnIntoRows<Real>(piece.adaptation, count, piece.side[2]);
    turnIntoRows<Real>(piece.outcome, count, piece.outcomeRows);
  }

  template <class Add>
  void changeLines(std::ptrdiff_t first, const Add& add) const {
    PieceMemory& piece = *strip.piece;
    const int count = countOf(first);
    turnExchange(count);
    for (int line = 0; line < lines; ++line) {
      const std::ptrdiff_t row = line * kPieceMemory;
      const Exchange exchange{piece.side[0] + row, piece.side[1] + row, piece.side[2] + row,
                              piece.outcomeRows + row};
      add(RowChange<Real>{step, cellAt(line, first - 1), count, piece.flags + row, exchange}, row);
    }
  }

  void addForward(std::ptrdiff_t first) const {
    PieceMemory& piece = *strip.piece;
    const int count = countOf(first);
    changeLines(first, [&piece, count](const RowChange<Real>& change, std::ptrdiff_t row) {
      change.addForward(piece.bedLoadAbove + row, piece.bedLoadBelow + row + 1);
      piece.bedLoadAbove[row] = piece.bedLoadAbove[row + count];
    });
  }

  void addReverse(std::ptrdiff_t first) const {
    turnIntoRows<Real>(strip.flags + (first - 1) * kLines, countOf(first), strip.piece->flags);
    changeLines(first, [](const RowChange<Real>& change, std::ptrdiff_t) { change.addReverse(); });
  }

  void sweep() const {
    const StripCarry carry{step, strip.sides, strip.flags, kLines};
    const Exchange exchange = lanesOfExchange();
    GrainMemory<Real> grain;
    typename StripCarry::Carried carried;
    for (std::ptrdiff_t first = 0; first <= positions; first += kPiece) {
      strip.rowActive[first] = computeSides(grain, first);
      if (!strip.rowActive[first]) continue;
      carry.carryForward(first - 1, first - 1 + countOf(first), carried, exchange);
      addForward(first);
    }
    carried = {};
    for (std::ptrdiff_t first = positions / kPiece * kPiece; first >= 0; first -= kPiece)
      if (strip.rowActive[first] &&
          carry.carryReverse(first - 1, first - 1 + countOf(first), carried, exchange))
        addReverse(first);
  }
};

template <class Real>
void sweepFirstAxis(const StepData& step, const StripArrays& strip, std::ptrdiff_t firstJ) {
  FirstAxis<Real>{step, strip, firstJ}.sweep();
}

// For the tests: both sweeps over lines of a strip along the first index.
template <class Real>
void carryBothWays(const StepData& step, const StripArrays& strip, std::ptrdiff_t positions,
                   const Exchange& forward, const Exchange& reverse) {
  using LineCarry = Carry<Real>;
  const LineCarry carry{step, strip.sides, strip.flags, kFirstStripLines};
  typename LineCarry::Carried carried;
  carry.carryForward(0, positions, carried, forward);
  carried = {};
  carry.carryReverse(0, positions, carried, reverse);
}

}  // namespace nivaro
