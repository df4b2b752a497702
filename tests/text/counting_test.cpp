#include "text/counting.hpp"

#include <gtest/gtest.h>

namespace nivaro {
namespace {

TEST(Counting, CountsAndTakesPieces) {
  const struct {
    std::string text, separator;
    std::int32_t count;
    std::string second;
  } cases[] = {
      {"a, b ,c", ",", 3, "b"}, {"a", ",", 1, ""},  {"a,", ",", 2, ""},
      {"   ", ",", 0, ""},      {"\t", ",", 0, ""}, {"a b c  ", " ", 3, "b"},
      {"a;;;b", ";;", 2, ";b"},  // occurrences do not overlap
      {"a==b", "==  ", 2, "b"},
  };
  for (const auto& [given, separator, count, second] : cases) {
    std::string text = given;
    EXPECT_EQ(numberOfSubstrings(text, separator), count) << given;
    EXPECT_EQ(substring(text, separator, 2), second) << given;
  }
  EXPECT_EQ(substring(" a , b", ",", 1), "a");
  EXPECT_EQ(substring("a,b", ",", 0), "");

  std::string tabs = "a\t,b";
  numberOfSubstrings(tabs, ",");
  EXPECT_EQ(tabs, "a,b");
}

TEST(Counting, CountsNumbers) {
  const std::pair<std::string_view, std::int32_t> cases[] = {
      {"1 2 3 ! three", 3},
      {"1,,3", 3},
      {"1 ,2,3", 3},
      {"1 a 3", -1},
      {"", 0},
      {"# 1", 0},
      {",1", 1},
      {",,1", 2},
      {"1, \t,2", 3},
      {"1,", 1},
      {"a", 0},
      {"1,,", 2},
      {"12x", -1},
      {"1\t2", 2},
      {"1/2", -1},
      {"-1.5E+3,.2e-1", 2},
  };
  for (const auto& [line, count] : cases) EXPECT_EQ(numberOfNumbers(line), count) << line;
}

TEST(Counting, CountsDays) {
  const std::pair<std::string_view, std::int32_t> cases[] = {
      {"20000101", 1},  {"20000228", 59},  // 31 + 28
      {"20000229", 59},                    // no leap days
      {"20000301", 60}, {"20010101", 366}, {"19991231", 0}, {"20001231", 365},
      {"2000x101", -1}, {"20001301", -1},  {"200001", -1},  {"", -1},
  };
  for (const auto& [date, day] : cases) EXPECT_EQ(numberOfDays(date), day) << date;
}

}  // namespace
}  // namespace nivaro
