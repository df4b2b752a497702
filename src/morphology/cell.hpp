// A cell of the grid, its neighbours along both axes, and the questions that the step asks of it.
#pragma once

#include "morphology/fields.hpp"

namespace nivaro {

struct Cell {
  int i = 0;
  int j = 0;
};

enum class Axis { First, Second };

template <typename T>
T& at(const Grid<T>& field, Cell c) {
  return field(c.i, c.j);
}

// So many cells further along an axis.
constexpr Cell moved(Cell c, Axis axis, int cells) {
  return axis == Axis::First ? Cell{c.i + cells, c.j} : Cell{c.i, c.j + cells};
}

// Takes part in transport and in time centring: the lowest bit of the code counts, of negative ones too.
inline bool isActiveAndWet(const StepInput& in, Cell c) {
  return (at(in.fields.bedCode, c) & 1) != 0 && isTrue(at(in.flow.wet, c));
}

// Its bed changes, by whatever cause.
inline bool hasMovableBed(const StepInput& in, Cell c) {
  return at(in.fields.bedCode, c) > 0;
}

// Suspended sand is not taken up below this.
inline bool isAtBedLimit(const StepInput& in, Cell c) {
  return -at(in.bed.zc, c) <= at(in.fields.bedLimit, c);
}

}  // namespace nivaro
