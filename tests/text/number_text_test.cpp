#include "text/number_text.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace nivaro {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

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
