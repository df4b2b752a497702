// Where two segments, or the lines through them, meet: segment A from point 1 to point 2, segment B
// from point 3 to point 4.
#pragma once

#include <cstdint>

namespace nivaro {

// Whether the segments meet. Touching counts, and so does any pair on one line, apart or not.
bool intersectLine(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                   double y4);

// What `intersectLineV2` returns.
namespace crossing {
inline constexpr std::int32_t kOneLine = -1;  // both segments on one line
inline constexpr std::int32_t kParallel = 0;
inline constexpr std::int32_t kOnAOnly = 1;
inline constexpr std::int32_t kOnBOnly = 2;
inline constexpr std::int32_t kOnBoth = 3;
inline constexpr std::int32_t kOnNeither = 4;
}  // namespace crossing

// On which segments the crossing of the two lines lies. The first point of a segment does not
// belong to it, the second does, so that a chain of segments meets each of its vertices once.
std::int32_t intersectLineV2(double x1, double y1, double x2, double y2, double x3, double y3,
                             double x4, double y4);

// The crossing of the two lines; false, and the point left as it was, when they are parallel. By
// slopes: a vertical line is one with exactly equal x.
bool intersectionPoint(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                       double y4, double& xi, double& yi);

}  // namespace nivaro
