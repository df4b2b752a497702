#include "morphology/line_carry.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "morphology/deposition.hpp"
#include "morphology/test_domain.hpp"

namespace nivaro {
namespace {

const double kNoNumber = std::numeric_limits<double>::quiet_NaN();

TEST(Deposition, WorkedExample) {
  // Q = 1, c = 0.5, alpha = (1 - 0.4^0.2) x 0.5 x 0.02 / 0.3 = 0.167447 / 30,
  // D = (1 - e^-0.055816) x 0.3.
  const Deposition result = deposition({0.5, 0.2, 1.0, 1.0, 1.0, 1.0}, 10.0, 0.02, 1.0);

  EXPECT_EQ(result.concentration, 0.5);
  EXPECT_NEAR(result.adaptation, 0.0055816, 5e-8);
  EXPECT_NEAR(result.deposited, 0.016286, 5e-7);
}

TEST(Deposition, StillWaterKeepsAllThatCanSettle) {
  // Q is floored at 1e-6, which makes c 5e5 and the exponent far below its limit of -10; outflow
  // against the sand counts negative and has the same effect.
  for (double outVelocity : {0.0, -5.0}) {
    const Deposition result = deposition({0.5, 0.0, 0.0, 1.0, outVelocity, 1.0}, 10.0, 0.02, 1.0);
    EXPECT_DOUBLE_EQ(result.concentration, 0.5e6);
    EXPECT_DOUBLE_EQ(result.deposited, (1.0 - std::exp(-10.0)) * 0.5);
  }
}

TEST(Deposition, NegativeFactorErodesAtMostTheLimit) {
  const Deposition result = deposition({0.5, 0.0, 1.0, 1.0, 1.0, 1.0}, 1e6, 0.02, -1.0);
  EXPECT_DOUBLE_EQ(result.deposited, (1.0 - std::exp(10.0)) * 0.5);
}

// Settings under which a level change is transport / (1 - voids), with voids 0 for erosion and 0.5
// for deposition, and under which half of the sand settles in a cell of capacity 0 at unit
// discharge: alpha dx = K ws dx = ln 2.
struct Line {
  TestDomain domain{3, 3};
  LineBuffers buffers{8};

  Line() {
    domain.settings.cellSize = domain.settings.timeStep = 1.0;
    domain.parameters.sandGrainDensity = 1.0;
    domain.parameters.fallVelocity = std::log(2.0);
  }

  // Appends a cell whose velocities have the sign of the transport that comes in.
  void add(double lower, double upper, double bedLoad = 0.0, bool atLimit = false,
           double velocity = 1.0) {
    const std::size_t k = buffers.count++;
    buffers.inSituVoids[k] = 0.0;
    buffers.depositionVoids[k] = 0.5;
    buffers.atBedLimit[k] = atLimit ? 1 : 0;
    buffers.lower.suspended[k] = lower;
    buffers.upper.suspended[k] = upper;
    buffers.lower.bedLoad[k] = bedLoad;
    for (auto* side : {&buffers.lower, &buffers.upper}) {
      side->depth[k] = 1.0;
      side->normal[k] = velocity;
    }
  }
  void forward() { carryForward(domain.input(), buffers.lower, buffers.upper, buffers); }
  void reverse() { carryReverse(domain.input(), buffers.lower, buffers.upper, buffers); }
};

struct Case {
  std::string name;
  double u, w;  // transport from the side that the sweep comes from, and to the other
  bool atLimit;
  double d, t;  // suspended term, carried transport afterwards
  double voids;
};

constexpr double kErosion = 0.0;
constexpr double kDeposition = 0.5;

// Three cells: the first carries u into the second (u is its own side's where it cannot be
// carried), the third erodes to 1000 and so tells what it was given: t, or 7 of its own where t is
// 0.
TEST(LineCarry, ForwardTable) {
  const Case cases[] = {
      {"diverging", -3.0, 5.0, false, -8.0, 5.0, kErosion},
      {"diverging at the limit", -3.0, 5.0, true, 0.0, 0.0, kErosion},
      {"downward", -3.0, -5.0, false, 0.0, 0.0, kDeposition},
      {"downward to a closed side", -3.0, 0.0, false, 0.0, 0.0, kDeposition},
      {"converging", 3.0, -5.0, false, 8.0, 0.0, kDeposition},
      {"converging from a closed side", 0.0, -5.0, false, 5.0, 0.0, kDeposition},
      {"erosion", 3.0, 5.0, false, -2.0, 5.0, kErosion},
      {"erosion from a closed side", 0.0, 5.0, false, -5.0, 5.0, kErosion},
      {"erosion at the limit", 3.0, 5.0, true, 0.0, 3.0, kErosion},
      {"nothing changes", 3.0, 3.0, false, 0.0, 3.0, kErosion},
      {"deposition", 4.0, 0.0, false, 2.0, 2.0, kDeposition},
      {"deposition at the limit", 4.0, 0.0, true, 2.0, 2.0, kDeposition},
      {"no number", 3.0, kNoNumber, false, 0.0, 3.0, kDeposition},
  };
  for (const auto& [name, u, w, atLimit, d, t, voids] : cases) {
    Line line;
    line.add(std::max(u, 0.0), std::max(u, 0.0));
    line.add(u > 0.0 ? 99.0 : u, w, 1.0, atLimit);
    line.add(7.0, 1000.0);
    line.forward();

    EXPECT_DOUBLE_EQ(line.buffers.change[1], (1.0 + d) / (1.0 - voids)) << name;
    EXPECT_DOUBLE_EQ(line.buffers.change[2], (t != 0.0 ? t : 7.0) - 1000.0) << name;
  }
}

// The same from the other end; the bed load of the middle cell must not show.
TEST(LineCarry, ReverseTable) {
  const Case cases[] = {
      {"erosion", -3.0, -5.0, false, -2.0, -5.0, kErosion},
      {"erosion from a closed side", 0.0, -5.0, false, -5.0, -5.0, kErosion},
      {"erosion at the limit", -3.0, -5.0, true, 0.0, -3.0, kErosion},
      {"nothing changes", -3.0, -3.0, false, 0.0, -3.0, kErosion},
      {"deposition", -4.0, 0.0, false, 2.0, -2.0, kDeposition},
      {"deposition at the limit", -4.0, 0.0, true, 2.0, -2.0, kDeposition},
      {"converging", -3.0, 5.0, false, 0.0, -3.0, kDeposition},
      {"upward", 3.0, 5.0, false, 0.0, 0.0, kDeposition},
      {"diverging", 3.0, -5.0, false, 0.0, 0.0, kDeposition},
      {"no number", -3.0, kNoNumber, false, 0.0, -3.0, kDeposition},
  };
  for (const auto& [name, u, w, atLimit, d, t, voids] : cases) {
    Line line;
    line.add(-1000.0, -7.0, 0.0, false, -1.0);
    line.add(w, u < 0.0 ? -99.0 : u, 1.0, atLimit, -1.0);
    line.add(std::min(u, 0.0), std::min(u, 0.0), 0.0, false, -1.0);
    line.reverse();

    EXPECT_DOUBLE_EQ(line.buffers.change[1], d / (1.0 - voids)) << name;
    EXPECT_DOUBLE_EQ(line.buffers.change[0], (t != 0.0 ? -t : 7.0) - 1000.0) << name;
  }
}

TEST(LineCarry, SandOfASweepIsConserved) {
  // Upward flow of changing capacity: with equal voids everywhere, what the bed gains is what
  // enters below the first cell less what is carried out above the last, which erodes to its
  // capacity.
  const std::vector<double> capacity = {5.0, 3.0, 2.5, 4.0, 1.0, 0.0, 2.0, 9.0};
  Line line;
  for (std::size_t k = 0; k < capacity.size(); ++k) {
    line.add(k == 0 ? 6.0 : capacity[k - 1], capacity[k]);
    line.buffers.inSituVoids[k] = 0.5;
    line.buffers.lower.bedLoad[k] = k == 0 ? 0.6 : 0.1 * capacity[k - 1];
    line.buffers.upper.bedLoad[k] = 0.1 * capacity[k];
  }
  line.forward();

  double gained = 0.0;
  for (double change : line.buffers.change) gained += change * 0.5;
  EXPECT_NEAR(gained, (6.0 + 0.6) - (9.0 + 0.9), 1e-12);
}

}  // namespace
}  // namespace nivaro
