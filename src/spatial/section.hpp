// Wet geometry of cross-sections: of a pipe, and of a straight piece of bed under a water level.
#pragma once

#include <cstdint>

namespace nivaro {

// Width of the water surface in a pipe filled to `depth`: 0 when it is empty or full.
double circleWidth(double radius, double depth);

struct WetSection {
  double area = 0.0;
  double width = 0.0;      // of the water surface
  double perimeter = 0.0;  // length of bed under water
};

// A piece of bed from (x1, z1) to (x2, z2); one that is switched off (0 or less) counts as dry.
WetSection hydParam(double x1, double z1, double x2, double z2, double level, std::int32_t isUsed);

struct WetHalves {
  WetSection first;
  WetSection second;
};

// The same for the two halves of the piece, each with its own switch.
WetHalves hydParam2(double x1, double z1, std::int32_t isFirstUsed, double x2, double z2,
                    std::int32_t isSecondUsed, double level);

}  // namespace nivaro
