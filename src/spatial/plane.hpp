// Points and lines in the plane. A line is given by two points on it and is directed from the first
// to the second.
#pragma once

#include <cstdint>
#include <span>

namespace nivaro {

// Lengths and divisors below this are zero.
inline constexpr double kZeroLength = 1e-6;

// 0 for points less than `kZeroLength` apart along both axes.
double distance(double x1, double y1, double x2, double y2);

// 0 when neither component exceeds `kZeroLength`: unlike `distance`, the bound itself is zero too.
double vectorMagnitude(double u, double v);

// Whether two points are less than `tolerance` apart along both axes.
bool samePoint(double x1, double y1, double x2, double y2, double tolerance);

// Positive when points 3 and 4 lie on the same side of the line through 1 and 2, negative when on
// opposite sides, zero when one of them lies on the line.
double sameSide(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                double y4);

// -1 for a point left of or on the directed line, +1 for one on its right.
std::int32_t pointPosition(double x1, double y1, double x2, double y2, double x3, double y3);

// Whether point 3 lies exactly on the line.
bool intersectPoint(double x1, double y1, double x2, double y2, double x3, double y3);

// Angle between two lines in degrees, 0 to 180; 0 when one of them has no length.
double angle2d(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
               double y4);

// Points in the frame of a grid with this origin whose first axis points in the direction `angle`
// (radians). The four arrays are equally long, and those written are not those read.
void geoShift(std::span<const double> x, std::span<const double> y, double x0, double y0,
              double angle, std::span<double> shiftedX, std::span<double> shiftedY);

}  // namespace nivaro
