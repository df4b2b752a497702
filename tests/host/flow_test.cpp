#include "flow.hpp"

#include <gmock/gmock.h>

#include <cmath>

namespace host {
namespace {

using testing::Le;

EdgeCondition discharge(double value) {
  return {EdgeCondition::Kind::Discharge, value};
}
EdgeCondition level(double value) {
  return {EdgeCondition::Kind::Level, value};
}
FlowSettings edges(EdgeCondition west, EdgeCondition east, Roughness roughness) {
  FlowSettings settings;
  settings.edges[static_cast<std::size_t>(Edge::West)] = west;
  settings.edges[static_cast<std::size_t>(Edge::East)] = east;
  settings.roughness = roughness;
  return settings;
}

// A bed without symmetry and with land standing out of water at level 1.
BedShape unevenBed() {
  BedShape shape;
  shape.profiles.push_back({Axis::X, {{0, 0}, {7, 0.6}, {12, -0.4}, {20, 0.3}}});
  shape.profiles.push_back({Axis::Y, {{0, 0.2}, {5, -0.3}, {9, 0.5}}});
  shape.boxes.push_back({4, 8, 3, 6, 1.5});
  return shape;
}

// Normal depth on a plane of slope S, walls without friction: q = h^(5/3) sqrt(S) / n after
// Manning; q = C h sqrt(h S) with C = 18 log10(12 h / ks) for a roughness height. The flow at a
// side has the depth below the higher of two levels, so a cell is half a fall shallower.
TEST(Flow, UniformFlowHasTheDischargeOfTheFormula) {
  const double slope = 0.001;
  const double h = 1.0;
  const struct {
    Roughness roughness;
    double q;
  } cases[] = {
      {{Roughness::Kind::Manning, 0.03}, std::sqrt(0.001) / 0.03},                   // 1.054
      {{Roughness::Kind::Height, 0.05}, 18 * std::log10(240.0) * std::sqrt(0.001)},  // 1.355
  };
  const GridFrame grid{40, 3, 5.0, 0, 0};
  BedShape plane;
  plane.slopeX = -slope;
  const BedArrays bed = bedArrays(plane, grid);

  for (const auto& c : cases) {
    const double q = c.q;
    // The level is given at the centre of the cells outside the edge, half a cell downstream.
    const double cellDepth = h - 0.5 * slope * grid.cellSize;
    const double outlet = cellDepth + plane.plane(grid.x(grid.lastJ() + 1), 0);
    Flow flow(grid, edges(discharge(q * 15), level(outlet), c.roughness), bed);
    flow.fill([&](double x, double y) { return plane.plane(x, y) + 0.6; });
    flow.run(7200);

    forEachCell(grid, [&](int i, int j) {
      EXPECT_NEAR(flow.depth(i, j), cellDepth, 1e-5) << j;
      EXPECT_NEAR(flow.q2()(i, j), q, 1e-6 * q);
      EXPECT_EQ(flow.q1()(i, j), 0);
    });
  }
}

// Over a side goes no more than critical flow over the higher of its two beds, q^2 = g h^3, and
// nothing where that bed stands above the water: thin water on a steep bank would flap otherwise.
TEST(Flow, NoMoreThanCriticalFlowPassesTheHigherBed) {
  const GridFrame grid{20, 9, 1.0, 0, 0};
  const BedArrays bed = bedArrays(unevenBed(), grid);
  FlowSettings settings = edges(discharge(3), level(0.4), {Roughness::Kind::Manning, 0.02});
  settings.centring = 0.8;
  Flow flow(grid, settings, bed);
  flow.fill([](double x, double) { return x < 6 ? 1.5 : 0.4; });

  const auto critical = [&](const Field<double>& before, double q, int i, int j, int i2, int j2) {
    const double from = q > 0 ? before(i, j) : before(i2, j2);
    const double h = std::max(0.0, from + std::min(bed.zc(i, j), bed.zc(i2, j2)));
    return h * std::sqrt(9.81 * h) + 1e-12;
  };
  for (int k = 0; k < 300; ++k) {
    const Field<double> before = flow.level();
    flow.step(flow.stableStep());
    forEachCell(grid, [&](int i, int j) {
      const double q1 = flow.q1()(i, j);
      const double q2 = flow.q2()(i, j);
      if (i < grid.lastI()) {
        ASSERT_THAT(std::abs(q1), Le(critical(before, q1, i, j, i + 1, j)));
      }
      if (j < grid.lastJ()) {
        ASSERT_THAT(std::abs(q2), Le(critical(before, q2, i, j, i, j + 1)));
      }
    });
  }
}

// The share of an edge cell in the inflow does not grow with its own level: it would feed waves that
// run from bank to bank.
TEST(Flow, InflowDoesNotFollowTheLevelOfEachCell) {
  const GridFrame grid{5, 8, 10.0, 0, 0};
  const BedArrays bed = bedArrays(BedShape{}, grid);
  Flow flow(grid, edges(discharge(40), level(1), {Roughness::Kind::Manning, 0.03}), bed);
  flow.fill([](double, double y) { return 1 + 0.005 * y; });
  for (int i = grid.firstI(); i <= grid.lastI(); ++i)
    EXPECT_NEAR(flow.q2()(i, grid.firstJ() - 1), 40.0 / 80, 1e-12);
}

TEST(Flow, WaterAtRestOverAnUnevenBedStaysAtRest) {
  const GridFrame grid{20, 9, 1.0, 0, 0};
  const BedArrays bed = bedArrays(unevenBed(), grid);
  Flow flow(grid, edges({}, level(1.0), {}), bed);
  flow.fill([](double, double) { return 1.0; });
  flow.run(60);

  forEachCell(grid, [&](int i, int j) {
    EXPECT_EQ(flow.q1()(i, j), 0);
    EXPECT_EQ(flow.q2()(i, j), 0);
    EXPECT_EQ(flow.level()(i, j), std::max(1.0, -bed.zc(i, j)));
  });
}

// A wave runs over a dry, uneven bed and drains again: the hardest case for both claims.
TEST(Flow, WettingAndDryingKeepsEveryDropAndNoDepthBelowZero) {
  const GridFrame grid{20, 9, 1.0, 0, 0};
  const BedArrays bed = bedArrays(unevenBed(), grid);
  Flow flow(grid, edges(discharge(0.8), level(-0.2), {}), bed);
  flow.fill([](double x, double) { return x < 5 ? 2.0 : -9.0; });
  const double start = flow.storedVolume();

  double mostWet = 0;
  for (int k = 0; k < 3000; ++k) {
    flow.step(flow.stableStep());
    double wet = 0;
    forEachCell(grid, [&](int i, int j) {
      ASSERT_GE(flow.depth(i, j), 0) << i << ' ' << j << " in step " << k;
      wet += flow.isWet(i, j);
    });
    mostWet = std::max(mostWet, wet);
  }

  EXPECT_GT(mostWet, 150);  // of 180: the wave did run over the bed
  EXPECT_GT(std::abs(flow.boundaryVolume()), 5);
  EXPECT_NEAR(flow.storedVolume() - start, flow.boundaryVolume(), 1e-10);
}

TEST(Flow, ABedRisingThroughItsWaterIsAccountedForAsDisplacement) {
  const GridFrame grid{4, 3, 2.0, 0, 0};
  BedArrays bed = bedArrays({}, grid);
  Flow flow(grid, {}, bed);
  flow.fill([](double, double) { return 0.5; });

  const double before = flow.storedVolume();  // 12 cells of 4 m2 and 0.5 m: 24 m3
  bed.zc(3, 3) = -0.2;                        // takes 0.2 m from one cell
  bed.zc(4, 4) = -0.8;                        // takes all of another
  flow.followBed(before);

  EXPECT_DOUBLE_EQ(before, 24);
  EXPECT_DOUBLE_EQ(flow.storedVolume(), 24 - 4 * (0.2 + 0.5));
  EXPECT_NEAR(flow.displacedVolume(), -2.8, 1e-12);
  EXPECT_FALSE(flow.isWet(4, 4));
}

// The same inflow from either end, or turned to the other axis, over a bed turned with it.
TEST(Flow, MirroredAndTurnedModelsGiveMirroredAndTurnedFlow) {
  const GridFrame along{12, 5, 1.0, 0, 0};
  const GridFrame across{5, 12, 1.0, 0, 0};
  const auto bump = [](double x, double y) {
    return 0.3 * std::exp(-(x - 4) * (x - 4) / 6 - (y - 2) * (y - 2) / 3);
  };
  const auto shaped = [](const GridFrame& grid, auto height) {
    BedArrays bed = bedArrays({}, grid);
    for (int j = 1; j <= grid.m(); ++j) {
      for (int i = 1; i <= grid.n(); ++i) bed.zc(i, j) = -height(grid.x(j), grid.y(i));
    }
    for (int j = 1; j < grid.m(); ++j) {
      for (int i = 1; i < grid.n(); ++i) {
        bed.z1(i, j) = 0.5 * (bed.zc(i, j) + bed.zc(i + 1, j));
        bed.z2(i, j) = 0.5 * (bed.zc(i, j) + bed.zc(i, j + 1));
      }
    }
    return bed;
  };
  const BedArrays bed = shaped(along, bump);
  const BedArrays mirrored = shaped(along, [&](double x, double y) { return bump(12 - x, y); });
  const BedArrays turned = shaped(across, [&](double x, double y) { return bump(y, x); });

  Flow flow(along, edges(discharge(1.5), level(0.5), {}), bed);
  Flow mirror(along, edges(level(0.5), discharge(1.5), {}), mirrored);
  FlowSettings southNorth;
  southNorth.edges[static_cast<std::size_t>(Edge::South)] = discharge(1.5);
  southNorth.edges[static_cast<std::size_t>(Edge::North)] = level(0.5);
  Flow turn(across, southNorth, turned);
  for (Flow* one : {&flow, &mirror, &turn}) {
    one->fill([](double, double) { return 0.5; });
    for (int k = 0; k < 200; ++k) one->step(0.2);
  }

  double strongest = 0;
  forEachCell(along, [&](int i, int j) {
    const int opposite = along.firstJ() + along.lastJ() - j;
    strongest = std::max(strongest, std::abs(flow.q1()(i, j)));
    EXPECT_NEAR(mirror.level()(i, opposite), flow.level()(i, j), 1e-12);
    EXPECT_NEAR(mirror.q2()(i, opposite - 1), -flow.q2()(i, j), 1e-12);
    EXPECT_NEAR(mirror.q1()(i, opposite), flow.q1()(i, j), 1e-12);
    EXPECT_NEAR(turn.level()(j, i), flow.level()(i, j), 1e-12);
    EXPECT_NEAR(turn.q1()(j, i), flow.q2()(i, j), 1e-12);
    EXPECT_NEAR(turn.q2()(j, i), flow.q1()(i, j), 1e-12);
  });
  EXPECT_GT(strongest, 0.001);  // the flow does go around the bump
}

TEST(Flow, CellsWithoutDataAreWalls) {
  const GridFrame grid{6, 4, 1.0, 0, 0};
  BedArrays bed = bedArrays({}, grid);
  bed.code(4, 5) = 0;
  Flow flow(grid, edges(discharge(0.4), level(0.3), {}), bed);
  flow.fill([](double, double) { return 0.3; });
  flow.run(30);

  EXPECT_EQ(flow.q2()(4, 4), 0);
  EXPECT_EQ(flow.q2()(4, 5), 0);
  EXPECT_EQ(flow.q1()(3, 5), 0);
  EXPECT_FALSE(flow.isWet(4, 5));
  EXPECT_GT(flow.q2()(3, 5), 0.05);
}

}  // namespace
}  // namespace host
