#include "text/csv.hpp"

#include <gtest/gtest.h>

namespace nivaro {
namespace {

TEST(Csv, FindsColumnsByName) {
  std::int32_t column = -7;

  EXPECT_FALSE(csvColumn("Time, \"Level\",Flow ", "Depth", column));
  EXPECT_EQ(column, -7);
  EXPECT_TRUE(csvColumn("Time, \"Level\",Flow ", "level", column));
  EXPECT_EQ(column, 2);
  EXPECT_TRUE(csvColumn("a,b,A,flow ", "'Flow'", column));
  EXPECT_EQ(column, 4);
  EXPECT_TRUE(csvColumn("a,b,A", "A", column));  // the first of them
  EXPECT_EQ(column, 1);
}

TEST(Csv, ReadsTheValueOfAColumn) {
  const struct {
    std::int32_t column, status;
    double value;
  } cases[] = {
      {1, 0, 1.5}, {2, -1, 9.0}, {3, 0, -20.0}, {4, 1, 9.0},
      {5, 0, 4.0}, {6, -1, 9.0}, {0, -1, 9.0},
  };
  for (const auto& [column, status, expected] : cases) {
    double value = 9.0;
    EXPECT_EQ(csvValue("1.5, ,-2e1,dry,\"4\"", column, value), status) << column;
    EXPECT_EQ(value, expected) << column;
  }
}

}  // namespace
}  // namespace nivaro
