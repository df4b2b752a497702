#include "text/number_text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace nivaro {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NumberText, ChoosesDecimalsBySize) {
  const std::pair<double, std::string_view> cases[] = {
      {0.0, "0."},
      {0.0000004, "0."},        // rounds away in six decimals
      {0.0099999, "0.01"},      // 0.010000 in six decimals
      {0.01234567, "0.01235"},  // five decimals from 0.01 on
      {0.123456, "0.1235"},
      {3.0, "3."},
      {1.23456, "1.235"},
      {99.999, "100."},
      {999.9, "999.9"},
      {999.99, "1000."},  // 1000.0 in one decimal
      {1000.4, "1000."},
      {-1234.0, "-1234."},
      {1e22, "********************"},  // 24 columns
      {kInfinity, "Infinity"},
      {std::nan(""), "NaN"},
  };
  for (const auto& [value, expected] : cases) EXPECT_EQ(areal(value), expected) << value;
}

TEST(NumberText, HasAFinerTable) {
  const std::pair<double, std::string_view> cases[] = {
      {0.12345678912, "0.1234567891"}, {1.1234567891, "1.123456789"}, {12.123456789, "12.12345679"},
      {123.12345678, "123.1234568"},   {1234.1234567, "1234.123457"}, {12345.123456, "12345.12346"},
      {123456.12346, "123456.1235"},   {1234567.1234, "1234567.123"}, {12345678.126, "12345678.13"},
      {123456789.16, "123456789.2"},   {1234567890.6, "1234567891."}, {0.5, "0.5"},
  };
  for (const auto& [value, expected] : cases) EXPECT_EQ(areal8(value), expected) << value;
}

TEST(NumberText, KeepsAFixedNumberOfDecimals) {
  EXPECT_EQ(areald(2.5, 3), "2.500");
  EXPECT_EQ(areald(-0.04, 1), "-0.0");
  EXPECT_EQ(areald(1.0, 40), "********************");
  EXPECT_EQ(areald(1.0, -3), "1.");
}

TEST(NumberText, FillsWithZeros) {
  EXPECT_EQ(aintegerPrec0(305, 4), "0305");
  EXPECT_EQ(aintegerPrec0(12345, 4), "12345");
  EXPECT_EQ(aintegerPrec0(-5, 4), "-5");
  EXPECT_EQ(aintegerPrec0(7, 99), "00000000000000000007");  // never more than 20 characters
  EXPECT_EQ(ainteger(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(arealdPrec0(2.5, 1, 6), "0002.5");
  EXPECT_EQ(arealdPrec0(-2.5, 1, 6), "-2.5");
  EXPECT_EQ(arealdPrec0(1234.5, 1, 3), "1234.5");
}

TEST(NumberText, WritesHours) {
  const struct {
    double hours;
    std::string_view format, expected;
  } cases[] = {
      {999.99, "DECIMAL", "999.99"},
      {999.996, "DECIMAL", "1000.0"},
      {9999.96, "DECIMAL", "10000."},
      {1.9999, "HHHH:MM", "2:00"},  // 119.994 minutes
      {-0.25, "HHHH:MM", "-0:15"},
      {-0.001, "HHHH:MM", "0:00"},
      {100.0, "HHHH:MM:SS", "100:00:00"},
      {1.0125, "HHHH:MM:SS", "1:00:45"},  // 45 seconds are 0.0125 hours
      {-kInfinity, "HHHH:MM", "-Infinity"},
      {1.0, "MINUTES", ""},
  };
  for (const auto& [hours, format, expected] : cases) {
    EXPECT_EQ(hoursText(hours, format), expected) << hours << ' ' << format;
  }
}

}  // namespace
}  // namespace nivaro
