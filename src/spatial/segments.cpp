#include "spatial/segments.hpp"

#include "spatial/plane.hpp"

namespace nivaro {
namespace {

// Position along a segment: 0 at its first point, 1 at its second.
bool isOnSegment(double position) {
  return position > 0.0 && position <= 1.0;
}

}  // namespace

bool intersectLine(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                   double y4) {
  return sameSide(x1, y1, x2, y2, x3, y3, x4, y4) <= 0.0 &&
         sameSide(x3, y3, x4, y4, x1, y1, x2, y2) <= 0.0;
}

std::int32_t intersectLineV2(double x1, double y1, double x2, double y2, double x3, double y3,
                             double x4, double y4) {
  const double divisor = (y4 - y3) * (x2 - x1) - (x4 - x3) * (y2 - y1);
  const double alongA = (x4 - x3) * (y1 - y3) - (y4 - y3) * (x1 - x3);
  const double alongB = (x2 - x1) * (y1 - y3) - (y2 - y1) * (x1 - x3);
  if (divisor == 0.0)
    return alongA == 0.0 && alongB == 0.0 ? crossing::kOneLine : crossing::kParallel;

  const bool onA = isOnSegment(alongA / divisor);
  const bool onB = isOnSegment(alongB / divisor);
  if (onA) return onB ? crossing::kOnBoth : crossing::kOnAOnly;
  return onB ? crossing::kOnBOnly : crossing::kOnNeither;
}

bool intersectionPoint(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                       double y4, double& xi, double& yi) {
  if (x1 == x2) {
    if (x3 == x4) return false;
    yi = y3 + (y4 - y3) / (x4 - x3) * (x1 - x3);
    xi = x1;
    return true;
  }
  if (x3 == x4) {
    yi = y1 + (y2 - y1) / (x2 - x1) * (x3 - x1);
    xi = x3;
    return true;
  }
  const double slopeA = (y2 - y1) / (x2 - x1);
  const double slopeB = (y4 - y3) / (x4 - x3);
  if (slopeA == slopeB) return false;
  xi = ((y1 - y3) - x1 * slopeA + x3 * slopeB) / (slopeB - slopeA);
  yi = y3 + slopeB * (xi - x3);
  return true;
}

}  // namespace nivaro
