#include "morphology/deposition.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace nivaro {
namespace {

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

}  // namespace
}  // namespace nivaro
