// What shapes the bed besides transport, at the edge of each rule: slumping, smoothing, rebuild.
#include <gtest/gtest.h>

#include <functional>

#include "morphology/bed_rebuild.hpp"
#include "morphology/slumping.hpp"
#include "morphology/test_domain.hpp"

namespace nivaro {
namespace {

// Two cells of the area side by side along the first index, 1 m apart and 1 in 1 at the steepest: the left
// one lies `step` lower than the right one, whose depth is 2.
TEST(Slumping, HeightsAtTheEdgeOfEachRule) {
  const struct {
    const char* name;
    double step;
    double slope;
    double bedLimit;  // of the left cell
    double height;
  } cases[] = {
      // 0.75 (1 - (1/0.75) / 2) = 0.25
      {"unstable", 0.75, 2.0, -99.0, 0.25},
      {"just stable", 1.0, 1.0, -99.0, 0.0},
      {"level", 0.000009, 1e9, -99.0, 0.0},
      {"limit at the neighbour's bed", 2.0, 1.0, -2.0, 0.0},
      // 2 (1 - (1/2) / 1) = 1
      {"limit below the neighbour's bed", 2.0, 1.0, -2.5, 1.0},
  };
  for (const auto& [name, step, slope, bedLimit, height] : cases) {
    TestDomain d(4, 3);
    const std::size_t left = 5, right = 6;
    d.settings.slumpDistanceFirst = 1.0;
    d.parameters.slumpSlope = slope;
    d.parameters.slumpBedChangeLimit = 9.0;
    d.zc[left] = 2.0 + step;
    d.bedLimit[left] = bedLimit;
    addSlumping(d.input(), d.area, {2, 2}, 2);

    EXPECT_DOUBLE_EQ(d.applied[left], height) << name;
    EXPECT_DOUBLE_EQ(d.applied[right], -height) << name;
  }
}

// A pit of 2 m, s1 = 0.5 m, s2 = 1 m, 1 in 1: 2 (1 - 0.5 / 2) = 1.5 falls from either side along the first
// index, 2 (1 - 1 / 2) = 1 along the second, nothing from the rim of the grid, which stands high.
TEST(Slumping, APitTakesFromItsNeighboursInTheAreaWhenItIsWet) {
  TestDomain d(5, 5);
  d.zc.assign(d.size, -7.0);
  for (int j = 2; j <= 4; ++j)
    for (int i = 2; i <= 4; ++i) d.grid(d.zc)(i, j) = i == 3 && j == 3 ? 4.0 : 2.0;
  d.settings.slumpDistanceFirst = 0.5;
  d.settings.slumpDistanceSecond = 1.0;
  d.parameters.slumpBedChangeLimit = 9.0;
  TestDomain::Reals expected(d.size, 0.0);
  addSlumping(d.input(), d.area);
  expected[12] = 5.0;
  expected[11] = expected[13] = -1.5;
  expected[7] = expected[17] = -1.0;
  EXPECT_EQ(d.applied, expected);

  d.applied.assign(d.size, 0.0);
  d.wet[12] = 0;
  addSlumping(d.input(), d.area);
  EXPECT_EQ(d.applied, TestDomain::Reals(d.size, 0.0));
}

TEST(Smoothing, ConfinesCodesLowersLimitsAndRebuildsTheBed) {
  TestDomain d(4, 4);
  d.zc = {9, 9, 9, 9,  //
          9, 3, 1, 9,  // (2, 2) and (3, 2)
          9, 5, 7, 9,  // (2, 3) and (3, 3)
          9, 9, 9, 9};
  d.zpts.assign(d.size, -1.0);
  d.bedCode = {1, 1, 1,  1,  //
               1, 1, 1,  1,  //
               1, 1, -1, 1,  // odd but not above 0
               1, 1, 1,  1};
  d.bedLimit[5] = d.bedLimit[10] = -1.0;  // above the beds at -3 and -7
  d.bedLimit[6] = -4.0;
  smoothBed(d.input(), d.area);

  EXPECT_EQ(d.bedCode,
            (std::vector<std::int32_t>{0, 0, 0, 0, 0, 1, 1, 0, 0, 1, -1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(d.bedLimit[5], -3.0);
  EXPECT_EQ(d.bedLimit[6], -4.0);
  EXPECT_EQ(d.bedLimit[10], -1.0);  // no bed to bring down
  const auto bed = d.input().bed;
  EXPECT_EQ(bed.z1(2, 2), 2.0);     // mean of 3 and 1
  EXPECT_EQ(bed.z2(2, 2), 4.0);     // mean of 3 and 5
  EXPECT_EQ(bed.z1(2, 3), 2.0);     // one of the two has no movable bed: as before
  EXPECT_EQ(bed.zpts(2, 2), 3.0);   // mean of 3, 1 and 5
  EXPECT_EQ(bed.zpts(1, 1), 3.0);   // of the rim, one cell counts
  EXPECT_EQ(bed.zpts(3, 3), -1.0);  // none counts: as before

  d.parameters.cellSidesHigh = true;
  smoothBed(d.input(), {1, 1, 4, 4});  // an area that fills the grid
  EXPECT_EQ(bed.z1(2, 2), 1.0);
  EXPECT_EQ(bed.z2(2, 2), 3.0);
  EXPECT_EQ(bed.zpts(2, 2), 3.0);
}

}  // namespace
}  // namespace nivaro
