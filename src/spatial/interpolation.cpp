#include "spatial/interpolation.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "spatial/plane.hpp"
#include "spatial/polygon.hpp"
#include "spatial/segments.hpp"

namespace nivaro {
namespace {

// Number by which reports tell a point tested for interpolation.
constexpr int kAskedByInterpolation = 2;

struct Point {
  double x;
  double y;
};

struct Triangle {
  std::array<double, 3> x;
  std::array<double, 3> y;
  std::array<double, 3> z;
};

// Half way along a line without length.
double share(double part, double whole) {
  return whole < kZeroLength ? 0.5 : part / whole;
}

double between(double from, double to, double part, double whole) {
  return from + (to - from) * share(part, whole);
}

double plainDistance(double x1, double y1, double x2, double y2) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  return std::sqrt(dx * dx + dy * dy);
}

// `foot` is where the line from the third corner through the point meets the opposite side: its
// value follows from that side, the point's from the line.
template <typename Distance>
double valueAlong(double px, double py, Point foot, std::span<const double, 3> x,
                  std::span<const double, 3> y, std::span<const double, 3> z, Distance length) {
  const double footValue =
      between(z[0], z[1], length(x[0], y[0], foot.x, foot.y), length(x[0], y[0], x[1], y[1]));
  return between(z[2], footValue, length(x[2], y[2], px, py), length(x[2], y[2], foot.x, foot.y));
}

// `intersectionPoint` of the first side with the line from the third corner to the point, but for
// the test for parallel lines.
Point footNoChecks(double px, double py, std::span<const double, 3> x,
                   std::span<const double, 3> y) {
  const bool sideVertical = x[0] == x[1];
  const bool lineVertical = x[2] == px;
  if (sideVertical && lineVertical) return {x[0], y[0]};

  const double lineSlope = (py - y[2]) / (px - x[2]);
  if (sideVertical) return {x[0], y[2] + lineSlope * (x[0] - x[2])};
  const double sideSlope = (y[1] - y[0]) / (x[1] - x[0]);
  if (lineVertical) return {x[2], y[0] + sideSlope * (x[2] - x[0])};
  const double footX =
      ((y[0] - y[2]) - x[0] * sideSlope + x[2] * lineSlope) / (lineSlope - sideSlope);
  return {footX, y[2] + lineSlope * (footX - x[2])};
}

Triangle withoutCorner(std::size_t left, std::span<const double> x, std::span<const double> y,
                       std::span<const double> z) {
  Triangle triangle{};
  std::size_t corner = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (i == left) continue;
    triangle.x[corner] = x[i];
    triangle.y[corner] = y[i];
    triangle.z[corner] = z[i];
    ++corner;
  }
  return triangle;
}

Outcome<bool> isInside(double px, double py, const Triangle& t, double minX) {
  const std::array<double, 4> x{t.x[0], t.x[1], t.x[2], t.x[0]};
  const std::array<double, 4> y{t.y[0], t.y[1], t.y[2], t.y[0]};
  const std::array<std::int32_t, 1> ends{4};
  return insidePolygon(px, py, x, y, minX, ends, kAskedByInterpolation);
}

// False, and the result left as it was, for a point outside.
Outcome<bool> interpolateInside(double px, double py, const Triangle& t, double minX,
                                double& result) {
  Outcome<bool> inside = isInside(px, py, t, minX);
  if (!inside || !inside.value()) return inside;
  return interpolateTriangle(px, py, t.x, t.y, t.z, result);
}

}  // namespace

bool interpolateTriangle(double px, double py, std::span<const double, 3> x,
                         std::span<const double, 3> y, std::span<const double, 3> z,
                         double& result) {
  result = kNoValue;
  Point foot{};
  if (!intersectionPoint(x[0], y[0], x[1], y[1], x[2], y[2], px, py, foot.x, foot.y)) return false;
  result = valueAlong(px, py, foot, x, y, z, distance);
  return true;
}

double interpolateTriangleNoChecks(double px, double py, std::span<const double, 3> x,
                                   std::span<const double, 3> y, std::span<const double, 3> z) {
  return valueAlong(px, py, footNoChecks(px, py, x, y), x, y, z, plainDistance);
}

Outcome<bool> interpolateElement(double px, double py, std::span<const double> x,
                                 std::span<const double> y, std::span<const double> z, double minX,
                                 double& result) {
  if (x.size() == 3) {
    constexpr std::size_t kNone = 3;
    return interpolateInside(px, py, withoutCorner(kNone, x, y, z), minX, result);
  }
  if (x.size() != 4) return false;

  double sum = 0.0;
  int count = 0;
  for (std::size_t left = 0; left < x.size(); ++left) {
    double value = 0.0;
    Outcome<bool> found = interpolateInside(px, py, withoutCorner(left, x, y, z), minX, value);
    if (!found) return found;
    if (!found.value()) continue;
    sum += value;
    ++count;
  }
  result = count > 0 ? sum / count : kNoValue;
  return count > 0;
}

}  // namespace nivaro
