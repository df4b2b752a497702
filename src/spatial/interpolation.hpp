// Linear interpolation of values given at the corners of triangles and of four-sided elements.
#pragma once

#include <span>

#include "text/report.hpp"

namespace nivaro {

// The result where there is no value.
inline constexpr double kNoValue = -99999.0;

// Value at a point of the triangle. False, with the result `kNoValue`, when the line through the
// third corner and the point runs parallel to the opposite side.
bool interpolateTriangle(double px, double py, std::span<const double, 3> x,
                         std::span<const double, 3> y, std::span<const double, 3> z,
                         double& result);

// The same for callers that know that the point lies in a proper triangle.
double interpolateTriangleNoChecks(double px, double py, std::span<const double, 3> x,
                                   std::span<const double, 3> y, std::span<const double, 3> z);

// Value at a point of an element of three or four corners; in four-sided ones the mean over the
// triangles of three corners that contain the point. False when there is no value: outside four
// corners the result is then `kNoValue`, otherwise it is left as it was. The report is for the
// screen (see screen_stop.hpp).
Outcome<bool> interpolateElement(double px, double py, std::span<const double> x,
                                 std::span<const double> y, std::span<const double> z, double minX,
                                 double& result);

}  // namespace nivaro
