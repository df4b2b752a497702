#include "platform/fixed_field.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace nivaro {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(FixedField, IsRoundedAlignedAndFilledWithAsterisks) {
  const struct {
    double value;
    int width, decimals;
    const char* field;
  } cases[] = {
      {3.14159, 8, 3, "   3.142"},
      {2.5, 3, 0, " 2."},      // ties, exact in binary: to the even digit
      {3.5, 3, 0, " 4."},      //
      {0.125, 5, 2, " 0.12"},  //
      {0.375, 5, 2, " 0.38"},  //
      {1.005, 5, 2, " 1.00"},  // 1.00499999999999989... in binary
      {9.996, 5, 2, "10.00"},
      {1e22, 24, 0, "10000000000000000000000."},
      {0.1, 23, 20, " 0.10000000000000000555"},
      {0.4, 5, 3, "0.400"},  // the leading zero goes where only that makes the number fit
      {0.4, 4, 3, ".400"},
      {0.4, 3, 3, "***"},
      {-0.4, 4, 2, "-.40"},
      {0.999, 3, 2, "***"},  // rounds to 1.00, which has no leading zero to drop
      {10.4, 3, 1, "***"},
      {0.3, 2, 0, "0."},
      {0.3, 1, 0, "*"},          // a point alone is no number
      {-0.001, 6, 2, " -0.00"},  // the sign stays
      {-0.001, 4, 2, "-.00"},
      {1e300, 10, 2, "**********"},
      {1.0, 5, 7, "*****"},
      {1.0, 0, 2, ""},
      {kNan, 5, 2, "  NaN"},
      {kNan, 2, 1, "**"},
      {kInfinity, 2, 1, "**"},
      {kInfinity, 7, 1, "    Inf"},
      {kInfinity, 8, 1, "Infinity"},
      {-kInfinity, 3, 1, "***"},
      {-kInfinity, 8, 1, "    -Inf"},
      {-kInfinity, 9, 1, "-Infinity"},
  };
  for (const auto& [value, width, decimals, field] : cases)
    EXPECT_EQ(fixedField(value, width, decimals), field)
        << value << " in " << width << " columns with " << decimals << " decimals";
}

TEST(IntegerField, IsPaddedWithBlanksAndZeros) {
  const struct {
    std::int64_t value;
    int width, minDigits;
    const char* field;
  } cases[] = {
      {42, 5, 1, "   42"},   {-42, 5, 4, "-0042"}, {7, 4, 4, "0007"},
      {12345, 4, 1, "****"}, {-12, 2, 1, "**"},    {1, 3, 4, "***"},
  };
  for (const auto& [value, width, minDigits, field] : cases)
    EXPECT_EQ(integerField(value, width, minDigits), field) << value;
}

}  // namespace
}  // namespace nivaro
