#include "platform/list_input.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "platform/unit.hpp"
#include "support/temp_folder.hpp"

namespace nivaro {
namespace {

constexpr auto Ok = ReadStatus::Ok;
constexpr auto End = ReadStatus::End;
constexpr auto Error = ReadStatus::Error;

TEST(ListInput, ReadsRealsInEverySpelling) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::pair<const char*, double> cases[] = {
      {"+1.5", 1.5},      {" \t-2 ", -2},
      {".5", 0.5},        {"5.", 5},
      {"-.5e1", -5},      {"1D-3", 0.001},
      {"1.25d+2", 125},   {"2q1", 20},
      {"2Q+1", 20},       {"1+2", 100},
      {"-1.5-1", -0.15},  {"+1.e+2", 100},
      {"12,34", 12},      {"7/", 7},
      {"0e999", 0},       {"1e-400", 0},
      {"1E-400", 0},      {"1d-99999999999", 0},
      {"3\r", 3},         {"5e-324", 5e-324},
      {"inf", kInfinity}, {"-Infinity", -kInfinity},
  };
  for (const auto& [text, expected] : cases) {
    double value = 77;
    EXPECT_EQ(readListItem(text, value), Ok) << text;
    EXPECT_EQ(value, expected) << text;
  }
  double value = 0;
  EXPECT_EQ(readListItem("NaN", value), Ok);
  EXPECT_TRUE(std::isnan(value));
  EXPECT_EQ(readListItem("-1e-400", value), Ok);
  EXPECT_TRUE(std::signbit(value));
}

TEST(ListInput, LeavesTheVariableAloneWhereAnItemIsNoNumber) {
  std::istringstream texts(
      R"(abc 1.5x 1e 1d 1e+ 1+ 1++2 1e5d3 +-1 --1 + . d5 "1.5" '1' 1e400 -1D999 1e99999999999 0x10
         0*5 99999999999*5 1;2)");
  for (std::string text; texts >> text;) {
    double value = 77;
    EXPECT_EQ(readListItem(text, value), Error) << text;
    EXPECT_EQ(value, 77) << text;
  }
}

TEST(ListInput, ReadsIntegersOnlyWithoutAPointAndInRange) {
  for (const auto& [text, expected] :
       {std::pair("+12", 12), std::pair("-0012", -12), std::pair("2147483647", 2147483647),
        std::pair("-2147483648", INT32_MIN)}) {
    std::int32_t value = 77;
    EXPECT_EQ(readListItem(text, value), Ok) << text;
    EXPECT_EQ(value, expected);
  }
  for (const char* text : {"2147483648", "-2147483649", "12.", "1e3", "+-1", "- 1", "\"12\""}) {
    std::int32_t value = 77;
    EXPECT_EQ(readListItem(text, value), Error) << text;
    EXPECT_EQ(value, 77) << text;
  }
}

// As many items are asked for as there are variables, each of which is "-" before; reading stops at
// the first that is not Ok.
TEST(ListInput, SeparatesRepeatsAndSkipsItems) {
  struct Case {
    const char* text;
    std::vector<std::string> items;
    ReadStatus status;
  };
  const Case cases[] = {
      {" a , b\t,\tc ", {"a", "b", "c"}, Ok},
      {"a,,,d", {"a", "-", "-", "d"}, Ok},
      {",b", {"-", "b"}, Ok},
      {"a,,", {"a", "-", "-"}, End},  // the end behind a comma is no empty item
      {"a b", {"a", "b", "-"}, End},
      {"a/b", {"a", "-", "-"}, Ok},
      {"/", {"-", "-"}, Ok},
      {"a,/", {"a", "-"}, Ok},
      {"2*a b", {"a", "a", "b"}, Ok},
      {"2* c", {"-", "-", "c"}, Ok},
      {"1*", {"-", "-"}, End},
      {"2*'x y',z", {"x y", "x y", "z"}, Ok},
      {"*a a*b", {"*a", "a*b"}, Ok},
      {"'it''s' \"say \"\"so\"\"\"", {"it's", "say \"so\""}, Ok},
      {"'a,b/c' d", {"a,b/c", "d"}, Ok},
      {"'' b", {"", "b"}, Ok},
      {"'''' b", {"'", "b"}, Ok},
      {"ab\"c d", {"ab\"c", "d"}, Ok},  // a quote within a word is part of it
      {"'open", {"-"}, End},
      {"", {"-"}, End},
      {" \t ", {"-"}, End},
  };
  for (const auto& [text, expected, status] : cases) {
    ListInput input{std::string_view(text)};
    std::vector<std::string> items(expected.size(), "-");
    ReadStatus last = Ok;
    for (std::string& item : items)
      if (last == Ok) last = input.read(item);
    EXPECT_EQ(items, expected) << text;
    EXPECT_EQ(last, status) << text;
  }
}

TEST(ListInput, GivesTheSameAgainAfterAnError) {
  double value = 0;
  ListInput wrong("x 2");
  EXPECT_EQ(wrong.read(value), Error);
  EXPECT_EQ(wrong.read(value), Error);
}

struct ListInputFromUnit : testing::Test {
  void open(std::string_view content) {
    ASSERT_EQ(unit.open(folder.write("list.txt", content), {}), "");
  }

  test::TempFolder folder;
  Unit unit;
};

TEST_F(ListInputFromUnit, TakesMissingItemsFromTheNextRecordAndSkipsTheRest) {
  open("1 2.5\n\n  \n7,\n8 rest of it\nnext\n");
  std::int32_t first = 0, third = 0, fourth = 0;
  double second = 0;
  EXPECT_EQ(ListInput(unit).readAll(first, second, third, fourth), Ok);
  EXPECT_EQ(std::tuple(first, second, third, fourth), std::tuple(1, 2.5, 7, 8));

  std::string_view record;
  EXPECT_EQ(unit.readRecord(record), Ok);
  EXPECT_EQ(record, "next");
}

TEST_F(ListInputFromUnit, ReadsNoRecordBeforeItMust) {
  open("1\n,2\n");
  std::int32_t value = 0;
  EXPECT_EQ(ListInput(unit).read(value), Ok);
  EXPECT_EQ(ListInput(unit).read(value), Ok);  // an empty item stands before the comma
  EXPECT_EQ(value, 1);

  unit.rewind();
  std::int32_t second = 0;
  EXPECT_EQ(ListInput(unit).readAll(value, second), Ok);  // here the comma separates the two
  EXPECT_EQ(second, 2);
}

TEST_F(ListInputFromUnit, ContinuesQuotedTextsAcrossRecords) {
  open("'one \ntwo' 'x''\n'\n");
  std::string text;
  std::string other;
  EXPECT_EQ(ListInput(unit).readAll(text, other), Ok);
  EXPECT_EQ(text, "one two");
  EXPECT_EQ(other, "x'");
  EXPECT_EQ(ListInput(unit).read(text), End);
}

}  // namespace
}  // namespace nivaro
