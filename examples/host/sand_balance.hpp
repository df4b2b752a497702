// The sand that moved, as far as the module's fields tell it: volumes of bed, voids included.
#pragma once

#include <cmath>

namespace host {

// Sums over all steps and cells, m3 of bed. Transport and slumping are told apart because slumping
// only moves sand about: over a grid it must come to nothing.
struct SandBalance {
  double eroded = 0;     // by transport, from the cells that went down in a step
  double deposited = 0;  // by transport, in the cells that went up
  double slumped = 0;    // moved by slumping, counted where it came to rest
  double slumpSum = 0;   // of slumping over all cells: 0 but for rounding
  double bedVolumeAtStart = 0;
  double bedVolumeAtEnd = 0;

  void addTransport(double change, double area) {
    (change < 0 ? eroded : deposited) += std::abs(change) * area;
  }
  void addSlumping(double change, double area) {
    slumpSum += change * area;
    if (change > 0) slumped += change * area;
  }

  // What crossed the edges of the morphology area, positive when the area gained.
  double net() const { return deposited - eroded; }
  // What the bed itself gained beyond transport and slumping: 0 but for rounding.
  double unexplained() const { return bedVolumeAtEnd - bedVolumeAtStart - net() - slumpSum; }
};

}  // namespace host
