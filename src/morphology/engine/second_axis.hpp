// The transport along the second index, strip by strip: sides and the forward sweep on the way up, cells a
// side behind, and the reverse sweep on the way back. The bed change is set and added to by each as it
// passes.
#pragma once

#include "morphology/engine/carry.hpp"
#include "morphology/engine/sides.hpp"

namespace nivaro {

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
      SideRow<Real, Axis::Second>{step_, cellAt(side - 1), below, above, grain_}.compute(
          count_, strip_.sides, elementAt(side),
          {bedLoadAbove_[side % 2], bedLoadBelow_[side % 2]});
    }
    if (activeBelow) {
      ExchangeMemory memory;
      carried_ = carry().forward(elementAt(side - 1), carried_, memory.exchange(), 0);
      changeOf(side - 1, memory).setForward(bedLoadAbove_[(side + 1) % 2], bedLoadBelow_[side % 2]);
    } else if (side > 0) {
      clearRow(side - 1);
      descendsAt(side - 1) = 0;
    }
  }

  void turn() { carried_ = Real{}; }

  void walkDown(std::ptrdiff_t position) {
    if (descendsAt(position) == 0) return;
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

  unsigned char& descendsAt(std::ptrdiff_t position) const {
    return strip_.descends[elementAt(position) / kLanes<Real>];
  }

  Carry<Real> carry() const {
    return {step_, strip_.sides, strip_.flags, strip_.descends, strip_.stride};
  }

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
      if (active)
        putFlags<Real>(step_, cellAt(side), count_, cells.active, strip_.flags + elementAt(side));
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
  GrainMemory<Real> grain_{step_};
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

}  // namespace nivaro
