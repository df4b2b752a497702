#include "spatial/section.hpp"

#include <cmath>

#include "spatial/plane.hpp"

namespace nivaro {
namespace {

// Filled within this of empty or of full, a pipe has no free surface.
constexpr double kPipeTolerance = 1e-5;

// The water's wedge over a bed that rises from `low` through the water level to `high` within dx.
WetSection wetWedge(double low, double high, double dx, double level) {
  const double depth = level - low;
  const double width = depth / (high - low) * dx;
  return {
      .area = depth * width / 2.0, .width = width, .perimeter = distance(0.0, 0.0, width, depth)};
}

}  // namespace

double circleWidth(double radius, double depth) {
  if (depth > 2.0 * radius - kPipeTolerance || depth < kPipeTolerance) return 0.0;
  const double aboveCentre = depth - radius;
  return 2.0 * std::sqrt(radius * radius - aboveCentre * aboveCentre);
}

WetSection hydParam(double x1, double z1, double x2, double z2, double level, std::int32_t isUsed) {
  if (isUsed <= 0) return {};

  const double dx = x2 - x1;
  const bool firstWet = level >= z1;
  const bool secondWet = level >= z2;
  if (firstWet && secondWet)
    return {
        .area = (level - (z1 + z2) / 2.0) * dx, .width = dx, .perimeter = distance(x1, z1, x2, z2)};
  if (firstWet) return wetWedge(z1, z2, dx, level);
  if (secondWet) return wetWedge(z2, z1, dx, level);
  return {};
}

WetHalves hydParam2(double x1, double z1, std::int32_t isFirstUsed, double x2, double z2,
                    std::int32_t isSecondUsed, double level) {
  const double middleX = (x1 + x2) / 2.0;
  const double middleZ = (z1 + z2) / 2.0;
  return {.first = hydParam(x1, z1, middleX, middleZ, level, isFirstUsed),
          .second = hydParam(middleX, middleZ, x2, z2, level, isSecondUsed)};
}

}  // namespace nivaro
