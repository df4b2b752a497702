#include "spatial/plane.hpp"

#include <cmath>
#include <numbers>

namespace nivaro {
namespace {

// Direction (ux, uy) crossed with (vx, vy): positive when the second points to the left of the
// first.
double cross(double ux, double uy, double vx, double vy) {
  return ux * vy - uy * vx;
}

double directionInDegrees(double dx, double dy) {
  return std::atan2(dy, dx) * 180.0 / std::numbers::pi;
}

}  // namespace

double distance(double x1, double y1, double x2, double y2) {
  const double dx = std::abs(x2 - x1);
  const double dy = std::abs(y2 - y1);
  if (dx < kZeroLength && dy < kZeroLength) return 0.0;
  return std::sqrt(dx * dx + dy * dy);
}

double vectorMagnitude(double u, double v) {
  if (std::abs(u) <= kZeroLength && std::abs(v) <= kZeroLength) return 0.0;
  return std::sqrt(u * u + v * v);
}

bool samePoint(double x1, double y1, double x2, double y2, double tolerance) {
  return std::abs(x1 - x2) < tolerance && std::abs(y1 - y2) < tolerance;
}

double sameSide(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                double y4) {
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  return cross(dx, dy, x3 - x1, y3 - y1) * cross(dx, dy, x4 - x2, y4 - y2);
}

std::int32_t pointPosition(double x1, double y1, double x2, double y2, double x3, double y3) {
  return cross(x2 - x1, y2 - y1, x3 - x1, y3 - y1) >= 0.0 ? -1 : 1;
}

bool intersectPoint(double x1, double y1, double x2, double y2, double x3, double y3) {
  return sameSide(x1, y1, x2, y2, x3, y3, x3, y3) == 0.0;
}

double angle2d(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
               double y4) {
  if (samePoint(x1, y1, x2, y2, kZeroLength) || samePoint(x3, y3, x4, y4, kZeroLength)) return 0.0;
  const double difference =
      std::abs(directionInDegrees(x4 - x3, y4 - y3) - directionInDegrees(x2 - x1, y2 - y1));
  return difference > 180.0 ? 360.0 - difference : difference;
}

void geoShift(std::span<const double> x, std::span<const double> y, double x0, double y0,
              double angle, std::span<double> shiftedX, std::span<double> shiftedY) {
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double dx = x[i] - x0;
    const double dy = y[i] - y0;
    shiftedX[i] = dx * cosine + dy * sine;
    shiftedY[i] = dy * cosine - dx * sine;
  }
}

}  // namespace nivaro
