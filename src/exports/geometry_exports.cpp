// The geometry family. A name that ends in _8 is a second name of its partner's behaviour.
#include <algorithm>
#include <span>

#include "exports/adapters.hpp"
#include "exports/call.hpp"
#include "exports/the_module.hpp"
#include "spatial/grid_frame.hpp"
#include "spatial/interpolation.hpp"
#include "spatial/plane.hpp"
#include "spatial/polygon.hpp"
#include "spatial/screen_stop.hpp"
#include "spatial/section.hpp"
#include "spatial/segments.hpp"

using namespace nivaro;

namespace {

template <typename T>
std::span<T> array(T* first, std::int32_t count) {
  return {first, static_cast<std::size_t>(std::max(count, std::int32_t{0}))};
}

using Corners = std::span<const double, 3>;

Corners corners(const double* first) {
  return Corners(first, 3);
}

void put(const WetSection& section, double* area, double* width, double* perimeter) {
  *area = section.area;
  *width = section.width;
  *perimeter = section.perimeter;
}

}  // namespace

double DISTANCE(const double* x1, const double* y1, const double* x2, const double* y2) noexcept {
  return call(__func__, [&] { return distance(*x1, *y1, *x2, *y2); });
}

double DISTANCE_8(const double* x1, const double* y1, const double* x2, const double* y2) noexcept {
  return DISTANCE(x1, y1, x2, y2);
}

double VECTOR_MAGNITUDE(const double* u, const double* v) noexcept {
  return call(__func__, [&] { return vectorMagnitude(*u, *v); });
}

double CIRCLE_WIDTH(const double* radius, const double* depth) noexcept {
  return call(__func__, [&] { return circleWidth(*radius, *depth); });
}

Logical SAME_POINT(const double* x1, const double* y1, const double* x2, const double* y2,
                   const double* tolerance) noexcept {
  return call(__func__, [&] { return logical(samePoint(*x1, *y1, *x2, *y2, *tolerance)); });
}

Logical SAME_POINT_8(const double* x1, const double* y1, const double* x2, const double* y2,
                     const double* tolerance) noexcept {
  return SAME_POINT(x1, y1, x2, y2, tolerance);
}

double SAME_SIDE(const double* x1, const double* y1, const double* x2, const double* y2,
                 const double* x3, const double* y3, const double* x4, const double* y4) noexcept {
  return call(__func__, [&] { return sameSide(*x1, *y1, *x2, *y2, *x3, *y3, *x4, *y4); });
}

double SAME_SIDE_8(const double* x1, const double* y1, const double* x2, const double* y2,
                   const double* x3, const double* y3, const double* x4,
                   const double* y4) noexcept {
  return SAME_SIDE(x1, y1, x2, y2, x3, y3, x4, y4);
}

std::int32_t POINT_POSITION_8(const double* x1, const double* y1, const double* x2,
                              const double* y2, const double* x3, const double* y3) noexcept {
  return call(__func__, [&] { return pointPosition(*x1, *y1, *x2, *y2, *x3, *y3); });
}

Logical INTERSECT_POINT(const double* x1, const double* y1, const double* x2, const double* y2,
                        const double* x3, const double* y3) noexcept {
  return call(__func__, [&] { return logical(intersectPoint(*x1, *y1, *x2, *y2, *x3, *y3)); });
}

Logical INTERSECT_LINE(const double* x1, const double* y1, const double* x2, const double* y2,
                       const double* x3, const double* y3, const double* x4,
                       const double* y4) noexcept {
  return call(__func__,
              [&] { return logical(intersectLine(*x1, *y1, *x2, *y2, *x3, *y3, *x4, *y4)); });
}

Logical INTERSECT_LINE_8(const double* x1, const double* y1, const double* x2, const double* y2,
                         const double* x3, const double* y3, const double* x4,
                         const double* y4) noexcept {
  return INTERSECT_LINE(x1, y1, x2, y2, x3, y3, x4, y4);
}

std::int32_t INTERSECT_LINE_V2(const double* x1, const double* y1, const double* x2,
                               const double* y2, const double* x3, const double* y3,
                               const double* x4, const double* y4) noexcept {
  return call(__func__, [&] { return intersectLineV2(*x1, *y1, *x2, *y2, *x3, *y3, *x4, *y4); });
}

std::int32_t INTERSECT_LINE_V2_8(const double* x1, const double* y1, const double* x2,
                                 const double* y2, const double* x3, const double* y3,
                                 const double* x4, const double* y4) noexcept {
  return INTERSECT_LINE_V2(x1, y1, x2, y2, x3, y3, x4, y4);
}

Logical INTERSECTION_POINT(const double* x1, const double* y1, const double* x2, const double* y2,
                           const double* x3, const double* y3, const double* x4, const double* y4,
                           double* xi, double* yi) noexcept {
  return call(__func__, [&] {
    return logical(intersectionPoint(*x1, *y1, *x2, *y2, *x3, *y3, *x4, *y4, *xi, *yi));
  });
}

Logical INTERSECTION_POINT_8(const double* x1, const double* y1, const double* x2, const double* y2,
                             const double* x3, const double* y3, const double* x4, const double* y4,
                             double* xi, double* yi) noexcept {
  return INTERSECTION_POINT(x1, y1, x2, y2, x3, y3, x4, y4, xi, yi);
}

double ANGLE2D(const double* x1, const double* y1, const double* x2, const double* y2,
               const double* x3, const double* y3, const double* x4, const double* y4) noexcept {
  return call(__func__, [&] { return angle2d(*x1, *y1, *x2, *y2, *x3, *y3, *x4, *y4); });
}

void GEO_SHIFT(const double* x, const double* y, const std::int32_t* count, const double* x0,
               const double* y0, const double* angle, double* shiftedX, double* shiftedY) noexcept {
  call(__func__, [&] {
    geoShift(array(x, *count), array(y, *count), *x0, *y0, *angle, array(shiftedX, *count),
             array(shiftedY, *count));
  });
}

Logical INSIDE_POLYGON(const double* px, const double* py, const double* x, const double* y,
                       const std::int32_t* vertexCount, const double* minX,
                       const std::int32_t* polygonEnds, const std::int32_t* polygonCount) noexcept {
  return call(__func__, [&] {
    return logical(
        valueOrStop(theModule().diagnostics,
                    insidePolygon(*px, *py, array(x, *vertexCount), array(y, *vertexCount), *minX,
                                  array(polygonEnds, *polygonCount))));
  });
}

Logical INSIDE_POLYGON_8(const double* px, const double* py, const double* x, const double* y,
                         const std::int32_t* vertexCount, const double* minX,
                         const std::int32_t* polygonEnds,
                         const std::int32_t* polygonCount) noexcept {
  return INSIDE_POLYGON(px, py, x, y, vertexCount, minX, polygonEnds, polygonCount);
}

Logical INTERPOLATE_TRIANGLE(const double* px, const double* py, const double* x, const double* y,
                             const double* z, double* result) noexcept {
  return call(__func__, [&] {
    return logical(interpolateTriangle(*px, *py, corners(x), corners(y), corners(z), *result));
  });
}

Logical INTERPOLATE_TRIANGLE_8(const double* px, const double* py, const double* x, const double* y,
                               const double* z, double* result) noexcept {
  return INTERPOLATE_TRIANGLE(px, py, x, y, z, result);
}

void INTERPOLATE_TRIANGLE_NO_CHECKS(const double* px, const double* py, const double* x,
                                    const double* y, const double* z, double* result) noexcept {
  call(__func__, [&] {
    *result = interpolateTriangleNoChecks(*px, *py, corners(x), corners(y), corners(z));
  });
}

Logical INTERPOLATE_ELEMENT_8(const double* px, const double* py, const double* x, const double* y,
                              const double* z, const std::int32_t* vertexCount, const double* minX,
                              double* result) noexcept {
  return call(__func__, [&] {
    return logical(
        valueOrStop(theModule().diagnostics,
                    interpolateElement(*px, *py, array(x, *vertexCount), array(y, *vertexCount),
                                       array(z, *vertexCount), *minX, *result)));
  });
}

void HYD_PARAM(const double* x1, const double* z1, const double* x2, const double* z2,
               const double* level, const std::int32_t* isUsed, double* area, double* width,
               double* perimeter) noexcept {
  call(__func__,
       [&] { put(hydParam(*x1, *z1, *x2, *z2, *level, *isUsed), area, width, perimeter); });
}

void HYD_PARAM2(const double* x1, const double* z1, const std::int32_t* isFirstUsed,
                const double* x2, const double* z2, const std::int32_t* isSecondUsed,
                const double* level, double* area1, double* area2, double* width1, double* width2,
                double* perimeter1, double* perimeter2) noexcept {
  call(__func__, [&] {
    const WetHalves halves = hydParam2(*x1, *z1, *isFirstUsed, *x2, *z2, *isSecondUsed, *level);
    put(halves.first, area1, width1, perimeter1);
    put(halves.second, area2, width2, perimeter2);
  });
}

void SET_SUB_GRID_AREA(const double* x, const double* y, const std::int32_t* count,
                       const double* cellSize, const std::int32_t* firstBound,
                       const std::int32_t* secondBound, std::int32_t* firstLow,
                       std::int32_t* secondLow, std::int32_t* firstHigh, std::int32_t* secondHigh,
                       double* minX, double* minY, double* maxX, double* maxY) noexcept {
  call(__func__, [&] {
    const std::int32_t points = std::max(*count, std::int32_t{1});
    const SubGridArea area =
        setSubGridArea(array(x, points), array(y, points), *cellSize, *firstBound, *secondBound);
    *firstLow = area.firstLow;
    *secondLow = area.secondLow;
    *firstHigh = area.firstHigh;
    *secondHigh = area.secondHigh;
    *minX = area.minX;
    *minY = area.minY;
    *maxX = area.maxX;
    *maxY = area.maxY;
  });
}
