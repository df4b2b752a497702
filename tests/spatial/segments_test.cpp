#include "spatial/segments.hpp"

#include <gtest/gtest.h>

#include "spatial/plane.hpp"
#include "spatial/random_integers.hpp"

namespace nivaro {
namespace {

// Twice the signed area of a triangle of integer points.
int area2(int ax, int ay, int bx, int by, int cx, int cy) {
  return ax * (by - cy) + bx * (cy - ay) + cx * (ay - by);
}

int sign(double v) {
  return v > 0 ? 1 : v < 0 ? -1 : 0;
}

// The position of the crossing along A is s1 / (s1 - s2) with the signed areas of its ends over B:
// above 0 and at most 1 exactly when the second end is on the line of B or they are on two sides.
bool onFirst(int s1, int s2) {
  return s2 == 0 || s1 * s2 < 0;
}

TEST(Segments, AgreeWithSignedAreasOnAllKindsOfTies) {
  test::RandomIntegers random(1);
  for (int n = 0; n < 200000; ++n) {
    int p[8];
    for (int& c : p) c = random.between(-3, 3);
    const auto [x1, y1, x2, y2, x3, y3, x4, y4] = p;
    const int s1 = area2(x3, y3, x4, y4, x1, y1);
    const int s2 = area2(x3, y3, x4, y4, x2, y2);
    const int s3 = area2(x1, y1, x2, y2, x3, y3);
    const int s4 = area2(x1, y1, x2, y2, x4, y4);
    const bool parallel = s1 == s2;
    const int code =
        parallel ? (s1 == 0 && s3 == 0 ? -1 : 0) : onFirst(s1, s2) * 1 + onFirst(s3, s4) * 2;

    ASSERT_EQ(intersectLineV2(x1, y1, x2, y2, x3, y3, x4, y4), parallel || code > 0 ? code : 4)
        << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2 << ' ' << x3 << ' ' << y3 << ' ' << x4 << ' '
        << y4;
    ASSERT_EQ(intersectLine(x1, y1, x2, y2, x3, y3, x4, y4), s1 * s2 <= 0 && s3 * s4 <= 0);
    ASSERT_EQ(sign(sameSide(x1, y1, x2, y2, x3, y3, x4, y4)), sign(1.0 * s3 * s4));
    ASSERT_EQ(pointPosition(x1, y1, x2, y2, x3, y3), s3 >= 0 ? -1 : 1);
    ASSERT_EQ(intersectPoint(x1, y1, x2, y2, x3, y3), s3 == 0);

    double xi = -77;
    double yi = -77;
    const bool bothVertical = x1 == x2 && x3 == x4;
    const bool found = intersectionPoint(x1, y1, x2, y2, x3, y3, x4, y4, xi, yi);
    // Two points that coincide make a vertical line, which crosses any other that is not.
    if (parallel && (bothVertical || (x1 != x2 && x3 != x4))) {
      ASSERT_FALSE(found || xi != -77 || yi != -77);
    } else if (!parallel) {
      ASSERT_TRUE(found);
      const double along = static_cast<double>(s1) / (s1 - s2);
      ASSERT_NEAR(xi, x1 + along * (x2 - x1), 1e-9);
      ASSERT_NEAR(yi, y1 + along * (y2 - y1), 1e-9);
    }
  }
}

}  // namespace
}  // namespace nivaro
