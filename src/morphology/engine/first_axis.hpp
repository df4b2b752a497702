// The transport along the first index: sweeps like those along the second, over lines that are turned into
// lanes piece by piece.
#pragma once

#include "morphology/engine/carry.hpp"
#include "morphology/engine/sides.hpp"

namespace nivaro {

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
    SideRow<Real, Axis::First>{step, below, cells, cells.from(1), grain}.compute(
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
    const StripCarry carry{step, strip.sides, strip.flags, strip.descends, kLines};
    const Exchange exchange = lanesOfExchange();
    GrainMemory<Real> grain(step);
    typename StripCarry::Carried carried;
    for (std::ptrdiff_t first = 0; first <= positions; first += kPiece) {
      strip.pieceDescends[first] = 0;
      if (!computeSides(grain, first)) continue;
      strip.pieceDescends[first] =
          carry.carryForward(first - 1, first - 1 + countOf(first), carried, exchange);
      addForward(first);
    }
    carried = {};
    for (std::ptrdiff_t first = positions / kPiece * kPiece; first >= 0; first -= kPiece)
      if (strip.pieceDescends[first] &&
          carry.carryReverse(first - 1, first - 1 + countOf(first), carried, exchange))
        addReverse(first);
  }
};

template <class Real>
void sweepFirstAxis(const StepData& step, const StripArrays& strip, std::ptrdiff_t firstJ) {
  FirstAxis<Real>{step, strip, firstJ}.sweep();
}

}  // namespace nivaro
