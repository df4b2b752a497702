#include "platform/fixed_field.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace nivaro {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct FixedCase {
  double value;
  int width;
  int decimals;
  const char* field;
};

void expectFields(std::initializer_list<FixedCase> cases) {
  for (const auto& [value, width, decimals, field] : cases)
    EXPECT_EQ(fixedField(value, width, decimals), field)
        << value << " in " << width << " columns with " << decimals << " decimals";
}

TEST(FixedField, RoundsTheExactBinaryValue) {
  expectFields({
      {3.14159, 8, 3, "   3.142"},
      {2.5, 3, 0, " 2."},      // a tie, exact in binary: to the even digit
      {3.5, 3, 0, " 4."},      //
      {0.125, 5, 2, " 0.12"},  //
      {0.375, 5, 2, " 0.38"},  //
      {1.005, 5, 2, " 1.00"},  // 1.00499999999999989... in binary
      {2.675, 5, 2, " 2.67"},  // 2.67499999999999982...
      {9.995, 5, 2, " 9.99"},  // 9.99499999999999922...
      {9.996, 5, 2, "10.00"},
      {1e22, 24, 0, "10000000000000000000000."},
      {0.1, 23, 20, " 0.10000000000000000555"},
  });
}

TEST(FixedField, DropsTheLeadingZeroOnlyWhereThatMakesItFit) {
  expectFields({
      {0.4, 5, 3, "0.400"},
      {0.4, 4, 3, ".400"},
      {-0.4, 4, 2, "-.40"},
      {-0.4, 5, 2, "-0.40"},
      {0.4, 3, 3, "***"},
      {0.999, 3, 2, "***"},  // rounds to 1.00, which has no leading zero to drop
      {10.4, 3, 1, "***"},
      {0.3, 2, 0, "0."},
      {0.3, 1, 0, "*"},  // a point alone is no number
  });
}

TEST(FixedField, KeepsTheSignOfWhatRoundsToZero) {
  expectFields({{-0.001, 6, 2, " -0.00"}, {-0.001, 4, 2, "-.00"}, {-0.4, 4, 0, " -0."}});
}

TEST(FixedField, FillsWithAsterisksWhatDoesNotFit) {
  expectFields({
      {12345.6, 6, 1, "******"},
      {-999.0, 4, 1, "****"},
      {1e300, 10, 2, "**********"},
      {-std::numeric_limits<double>::max(), 3, 0, "***"},
      {1.0, 5, 7, "*****"},
      {1.0, 0, 2, ""},
  });
}

TEST(FixedField, NamesWhatIsNoNumber) {
  expectFields({
      {kNan, 5, 2, "  NaN"},
      {kNan, 3, 2, "NaN"},
      {kNan, 2, 1, "**"},
      {kInfinity, 2, 1, "**"},
      {kInfinity, 3, 1, "Inf"},
      {kInfinity, 7, 1, "    Inf"},
      {kInfinity, 8, 1, "Infinity"},
      {kInfinity, 9, 1, " Infinity"},
      {-kInfinity, 3, 1, "***"},
      {-kInfinity, 4, 1, "-Inf"},
      {-kInfinity, 8, 1, "    -Inf"},
      {-kInfinity, 9, 1, "-Infinity"},
  });
}

TEST(IntegerField, PadsWithBlanksAndZeros) {
  struct Case {
    std::int64_t value;
    int width;
    int minDigits;
    const char* field;
  };
  const Case cases[] = {
      {42, 5, 1, "   42"},
      {-42, 5, 4, "-0042"},
      {7, 4, 4, "0007"},
      {0, 2, 1, " 0"},
      {12345, 4, 1, "****"},
      {-12, 2, 1, "**"},
      {1, 3, 4, "***"},
      {std::numeric_limits<std::int64_t>::min(), 20, 1, "-9223372036854775808"},
  };
  for (const auto& [value, width, minDigits, field] : cases)
    EXPECT_EQ(integerField(value, width, minDigits), field) << value;
}

}  // namespace
}  // namespace nivaro
