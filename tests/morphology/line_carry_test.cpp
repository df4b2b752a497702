#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "morphology/deposition.hpp"
#include "morphology/processors.hpp"
#include "morphology/step_data.hpp"
#include "morphology/step_kernel.hpp"
#include "morphology/step_scratch.hpp"
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

// Half of the sand settles in a cell of capacity 0 at unit discharge: alpha dx = K ws dx = ln 2. The
// same cells lie in every lane.
struct Line {
  TestDomain domain{3, 3};
  StepScratch scratch;
  StripArrays strip;
  std::ptrdiff_t count = 0;

  struct Results {
    std::vector<double> reals[3];
    std::vector<std::int64_t> outcome;
    Results() : outcome(kCells) {
      for (auto& values : reals) values.resize(kCells);
    }
    Exchange exchange() {
      return {reals[0].data(), reals[1].data(), reals[2].data(), outcome.data()};
    }
  };
  static constexpr std::size_t kCells = 8 * kFirstStripLines;
  Results forward, reverse;

  static StepData centredStep() {
    StepData step;
    step.parameters.velocityCentred = true;
    return step;
  }

  explicit Line(Processor processor)
      : scratch(processor), strip(scratch.strip(centredStep(), 8, kFirstStripLines)) {
    domain.settings.cellSize = domain.settings.timeStep = 1.0;
    domain.parameters.sandGrainDensity = 1.0;
    domain.parameters.fallVelocity = std::log(2.0);
  }

  // Appends a cell whose velocities have the sign of the transport that comes in. Both sweeps see the
  // same transports; what each does not look at is no number.
  void add(double lower, double upper, bool atLimit = false, double velocity = 1.0) {
    const std::ptrdiff_t cell = count * kFirstStripLines;
    const std::ptrdiff_t next = cell + kFirstStripLines;
    SideArrays& s = strip.sides;
    for (std::ptrdiff_t lane = 0; lane < kFirstStripLines; ++lane) {
      strip.flags[cell + lane] = kActiveCell | (atLimit ? kAtBedLimit : 0);
      s.suspendedAbove[cell + lane] = s.centredSuspendedAbove[cell + lane] = lower;
      s.suspendedBelow[next + lane] = s.centredSuspendedBelow[next + lane] = upper;
      for (double* discharge : {s.discharge, s.centredDischargeAbove, s.centredDischargeBelow})
        discharge[cell + lane] = discharge[next + lane] = velocity;
    }
    ++count;
  }
  void carry() {
    const StepInput input = domain.input();
    const StepData step = stepData(input, domain.area);
    stepKernel(scratch.processor())
        .carry(step, strip, count, forward.exchange(), reverse.exchange());
  }
  template <class Element>
  Element at(const Element* array, std::ptrdiff_t position, std::ptrdiff_t lane) const {
    return array[position * kFirstStripLines + lane];
  }
};

struct Case {
  std::string name;
  double u, w;  // transport from the side that the sweep comes from, and to the other
  bool atLimit;
  double d, t;   // suspended term, carried transport afterwards
  bool erosion;  // voids in situ, else those of a deposit
};

// Three cells: the first carries u into the second (u is its own side's where it cannot be
// carried), the third erodes to 1000 and so tells what it was given: t, or 7 of its own where t is
// 0.
TEST(LineCarry, ForwardTable) {
  const Case cases[] = {
      {"diverging", -3.0, 5.0, false, -8.0, 5.0, true},
      {"diverging at the limit", -3.0, 5.0, true, 0.0, 0.0, true},
      {"downward", -3.0, -5.0, false, 0.0, 0.0, false},
      {"downward to a closed side", -3.0, 0.0, false, 0.0, 0.0, false},
      {"converging", 3.0, -5.0, false, 8.0, 0.0, false},
      {"converging from a closed side", 0.0, -5.0, false, 5.0, 0.0, false},
      {"erosion", 3.0, 5.0, false, -2.0, 5.0, true},
      {"erosion from a closed side", 0.0, 5.0, false, -5.0, 5.0, true},
      {"erosion at the limit", 3.0, 5.0, true, 0.0, 3.0, true},
      {"nothing changes", 3.0, 3.0, false, 0.0, 3.0, true},
      {"deposition", 4.0, 0.0, false, 2.0, 2.0, false},
      {"deposition at the limit", 4.0, 0.0, true, 2.0, 2.0, false},
      {"no number", 3.0, kNoNumber, false, 0.0, 3.0, false},
  };
  for (const Processor processor : supportedProcessors())
    for (const auto& [name, u, w, atLimit, d, t, erosion] : cases) {
      Line line(processor);
      line.add(std::max(u, 0.0), std::max(u, 0.0));
      line.add(u > 0.0 ? 99.0 : u, w, atLimit);
      line.add(7.0, 1000.0);
      line.carry();

      for (std::ptrdiff_t lane = 0; lane < kFirstStripLines; ++lane) {
        EXPECT_DOUBLE_EQ(line.at(line.forward.exchange().net, 1, lane), d) << name;
        EXPECT_DOUBLE_EQ(line.at(line.forward.exchange().net, 2, lane),
                         (t != 0.0 ? t : 7.0) - 1000.0)
            << name;
        EXPECT_EQ((line.at(line.forward.exchange().outcome, 1, lane) & kErosion) != 0, erosion)
            << name;
      }
    }
}

// The same from the other end.
TEST(LineCarry, ReverseTable) {
  const Case cases[] = {
      {"erosion", -3.0, -5.0, false, -2.0, -5.0, true},
      {"erosion from a closed side", 0.0, -5.0, false, -5.0, -5.0, true},
      {"erosion at the limit", -3.0, -5.0, true, 0.0, -3.0, true},
      {"nothing changes", -3.0, -3.0, false, 0.0, -3.0, true},
      {"deposition", -4.0, 0.0, false, 2.0, -2.0, false},
      {"deposition at the limit", -4.0, 0.0, true, 2.0, -2.0, false},
      {"converging", -3.0, 5.0, false, 0.0, -3.0, false},
      {"upward", 3.0, 5.0, false, 0.0, 0.0, false},
      {"diverging", 3.0, -5.0, false, 0.0, 0.0, false},
      {"no number", -3.0, kNoNumber, false, 0.0, -3.0, false},
  };
  for (const Processor processor : supportedProcessors())
    for (const auto& [name, u, w, atLimit, d, t, erosion] : cases) {
      Line line(processor);
      line.add(-1000.0, -7.0, false, -1.0);
      line.add(w, u < 0.0 ? -99.0 : u, atLimit, -1.0);
      line.add(std::min(u, 0.0), std::min(u, 0.0), false, -1.0);
      line.carry();

      for (std::ptrdiff_t lane = 0; lane < kFirstStripLines; ++lane) {
        EXPECT_DOUBLE_EQ(line.at(line.reverse.exchange().net, 1, lane), d) << name;
        EXPECT_DOUBLE_EQ(line.at(line.reverse.exchange().net, 0, lane),
                         (t != 0.0 ? -t : 7.0) - 1000.0)
            << name;
        EXPECT_EQ((line.at(line.reverse.exchange().outcome, 1, lane) & kErosion) != 0, erosion)
            << name;
      }
    }
}

TEST(LineCarry, SandOfASweepIsConserved) {
  // Upward flow of changing capacity: what the cells gain is what enters below the first less what is
  // carried out above the last, which erodes to its capacity.
  const std::vector<double> capacity = {5.0, 3.0, 2.5, 4.0, 1.0, 0.0, 2.0, 9.0};
  for (const Processor processor : supportedProcessors()) {
    Line line(processor);
    for (std::size_t k = 0; k < capacity.size(); ++k)
      line.add(k == 0 ? 6.0 : capacity[k - 1], capacity[k]);
    line.carry();

    double gained = 0.0;
    for (std::ptrdiff_t k = 0; k < line.count; ++k)
      gained += line.at(line.forward.exchange().net, k, 3);
    EXPECT_NEAR(gained, 6.0 - 9.0, 1e-12);
  }
}

}  // namespace
}  // namespace nivaro
