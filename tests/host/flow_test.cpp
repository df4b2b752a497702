#include "flow.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace host {
namespace {

EdgeCondition discharge(double value) {
  return {EdgeCondition::Kind::Discharge, value};
}
EdgeCondition level(double value) {
  return {EdgeCondition::Kind::Level, value};
}
FlowSettings edges(EdgeCondition west, EdgeCondition east, Roughness roughness = {}) {
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
constexpr GridFrame kUnevenGrid{20, 9, 1.0, 0, 0};

// A model with water of the level of (x, y).
struct Model {
  template <typename Level>
  Model(const GridFrame& grid_, const BedArrays& bed_, const FlowSettings& settings, Level level)
      : grid(grid_), bed(bed_), flow(grid, settings, bed) {
    flow.fill(level);
  }

  GridFrame grid;
  BedArrays bed;
  Flow flow;
};

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

  for (const auto& c : cases) {
    const double q = c.q;
    // The level is given at the centre of the cells outside the edge, half a cell downstream.
    const double cellDepth = h - 0.5 * slope * grid.cellSize;
    const double outlet = cellDepth + plane.plane(grid.x(grid.lastJ() + 1), 0);
    Model model(grid, bedArrays(plane, grid), edges(discharge(q * 15), level(outlet), c.roughness),
                [&](double x, double y) { return plane.plane(x, y) + 0.6; });
    model.flow.run(7200);

    forEachCell(grid, [&](int i, int j) {
      EXPECT_NEAR(model.flow.depth(i, j), cellDepth, 1e-5) << j;
      EXPECT_NEAR(model.flow.q2()(i, j), q, 1e-6 * q);
      EXPECT_EQ(model.flow.q1()(i, j), 0);
    });
    // The line goes on outside the inflow, where the module looks for the depth at the edge.
    EXPECT_NEAR(model.flow.depth(grid.firstI(), grid.firstJ() - 1), cellDepth, 1e-5);
  }
}

// Over a side goes no more than critical flow over the higher of its two beds, q^2 = g h^3, and
// nothing where that bed stands above the water: thin water on a steep bank would flap otherwise.
TEST(Flow, NoMoreThanCriticalFlowPassesTheHigherBed) {
  FlowSettings settings = edges(discharge(3), level(0.4), {Roughness::Kind::Manning, 0.02});
  settings.centring = 0.8;
  Model model(kUnevenGrid, bedArrays(unevenBed(), kUnevenGrid), settings,
              [](double x, double) { return x < 6 ? 1.5 : 0.4; });
  const Field<double>& zc = model.bed.zc;

  for (int k = 0; k < 300; ++k) {
    const Field<double> before = model.flow.level();
    const auto critical = [&](double q, int i, int j, int i2, int j2) {
      const double from = q > 0 ? before(i, j) : before(i2, j2);
      const double h = std::max(0.0, from + std::min(zc(i, j), zc(i2, j2)));
      return h * std::sqrt(9.81 * h) + 1e-12;
    };
    model.flow.step(model.flow.stableStep());
    forEachCell(kUnevenGrid, [&](int i, int j) {
      const double q1 = i < kUnevenGrid.lastI() ? model.flow.q1()(i, j) : 0;
      const double q2 = j < kUnevenGrid.lastJ() ? model.flow.q2()(i, j) : 0;
      ASSERT_LE(std::abs(q1), critical(q1, i, j, i + 1, j));
      ASSERT_LE(std::abs(q2), critical(q2, i, j, i, j + 1));
    });
  }
}

// Depths of 8 and 1 m carry 8^(5/3) = 32 to 1. The share of a cell does not grow with its own level: it
// would feed waves that run from bank to bank.
TEST(Flow, InflowIsSharedByTheDepthBelowTheMeanLevel) {
  const GridFrame grid{5, 8, 10.0, 0, 0};
  BedShape bed;
  bed.boxes.push_back({0, 50, 40, 80, 7});
  const Model model(grid, bedArrays(bed, grid), edges(discharge(4 * 330), level(1)),
                    [](double, double y) { return 8 + 0.005 * (y - 40); });
  for (int i = grid.firstI(); i <= grid.lastI(); ++i)
    EXPECT_NEAR(model.flow.q2()(i, grid.firstJ() - 1), grid.y(i) < 40 ? 32 : 1, 1e-12);
}

TEST(Flow, WaterAtRestOverAnUnevenBedStaysAtRest) {
  Model model(kUnevenGrid, bedArrays(unevenBed(), kUnevenGrid), edges({}, level(1.0)),
              [](double, double) { return 1.0; });
  model.flow.run(60);

  forEachCell(kUnevenGrid, [&](int i, int j) {
    EXPECT_EQ(model.flow.q1()(i, j), 0);
    EXPECT_EQ(model.flow.q2()(i, j), 0);
    EXPECT_EQ(model.flow.level()(i, j), std::max(1.0, -model.bed.zc(i, j)));
  });
}

// A wave runs over a dry, uneven bed and drains again, now and then in steps that are far too long: the
// hardest case for both claims.
TEST(Flow, WettingAndDryingKeepsEveryDropAndNoDepthBelowZero) {
  Model model(kUnevenGrid, bedArrays(unevenBed(), kUnevenGrid), edges(discharge(0.8), level(-0.2)),
              [](double x, double) { return x < 5 ? 2.0 : -9.0; });
  Flow& flow = model.flow;
  const double start = flow.storedVolume();

  double mostWet = 0;
  for (int k = 0; k < 3000; ++k) {
    flow.step(flow.stableStep() * (k % 50 == 0 ? 10 : 1));
    double wet = 0;
    forEachCell(kUnevenGrid, [&](int i, int j) {
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
  Model model(grid, bedArrays({}, grid), {}, [](double, double) { return 0.5; });

  const double before = model.flow.storedVolume();  // 12 cells of 4 m2 and 0.5 m: 24 m3
  model.bed.zc(3, 3) = -0.2;                        // takes 0.2 m from one cell
  model.bed.zc(4, 4) = -0.8;                        // takes all of another
  model.flow.followBed(before);

  EXPECT_DOUBLE_EQ(before, 24);
  EXPECT_DOUBLE_EQ(model.flow.storedVolume(), 24 - 4 * (0.2 + 0.5));
  EXPECT_NEAR(model.flow.displacedVolume(), -2.8, 1e-12);
  EXPECT_FALSE(model.flow.isWet(4, 4));
}

// The same inflow along the other axis and from its upper end, over a bed turned with it.
TEST(Flow, ATurnedModelGivesTheTurnedFlow) {
  const GridFrame turnedGrid{9, 20, 1.0, 0, 0};
  BedShape turnedBed;
  turnedBed.profiles.push_back({Axis::Y, {{0, 0.3}, {8, -0.4}, {13, 0.6}, {20, 0}}});
  turnedBed.profiles.push_back({Axis::X, {{0, 0.2}, {5, -0.3}, {9, 0.5}}});
  turnedBed.boxes.push_back({3, 6, 12, 16, 1.5});
  FlowSettings northSouth;
  northSouth.edges[static_cast<std::size_t>(Edge::North)] = discharge(1.5);
  northSouth.edges[static_cast<std::size_t>(Edge::South)] = level(0.5);
  const auto filled = [](double, double) { return 0.5; };
  Model model(kUnevenGrid, bedArrays(unevenBed(), kUnevenGrid), edges(discharge(1.5), level(0.5)),
              filled);
  Model turned(turnedGrid, bedArrays(turnedBed, turnedGrid), northSouth, filled);
  for (Flow* flow : {&model.flow, &turned.flow})
    for (int k = 0; k < 200; ++k) flow->step(0.2);

  double strongest = 0;
  forEachCell(kUnevenGrid, [&](int i, int j) {
    const int k = kUnevenGrid.firstJ() + kUnevenGrid.lastJ() - j;
    strongest = std::max(strongest, std::abs(model.flow.q1()(i, j)));
    EXPECT_NEAR(turned.flow.level()(k, i), model.flow.level()(i, j), 1e-12);
    EXPECT_NEAR(turned.flow.q1()(k - 1, i), -model.flow.q2()(i, j), 1e-12);
    EXPECT_NEAR(turned.flow.q2()(k, i), model.flow.q1()(i, j), 1e-12);
  });
  EXPECT_GT(strongest, 0.001);  // the flow does go around the land
}

TEST(Flow, CellsWithoutDataAreWalls) {
  const GridFrame grid{6, 4, 1.0, 0, 0};
  BedArrays bed = bedArrays({}, grid);
  bed.code(4, 5) = 0;
  Model model(grid, bed, edges(discharge(0.4), level(0.3)), [](double, double) { return 0.3; });
  model.flow.run(30);

  EXPECT_EQ(model.flow.q2()(4, 4), 0);
  EXPECT_EQ(model.flow.q2()(4, 5), 0);
  EXPECT_EQ(model.flow.q1()(3, 5), 0);
  EXPECT_FALSE(model.flow.isWet(4, 5));
  EXPECT_GT(model.flow.q2()(3, 5), 0.05);
}

}  // namespace
}  // namespace host
