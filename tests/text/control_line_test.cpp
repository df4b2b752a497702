#include "text/control_line.hpp"

#include <gtest/gtest.h>

namespace nivaro {
namespace {

VariableTable scenario() {
  VariableTable variables;
  variables.add("Grain ", "0.2  ");
  variables.add("set", "D50 == <<grain>>");
  variables.add("loop", "x<<loop>>");
  return variables;
}

TEST(ControlLine, TakesTheValuesOfItsVariables) {
  const std::pair<std::string, std::string> cases[] = {
      {"Set == <<GRAIN>> m  ", "Set == 0.2 m"},
      {"Set == <<Grain >>", "Set == 0.2"},
      {"<<set>> <<grain>>", "D50 == 0.2 0.2"},  // values may hold variables
      {"a == 1 ! <<nobody>>", "a == 1 "},       // not in comments
      {"a >> b", "a >> b"},
  };
  for (const auto& [given, left] : cases) {
    std::string line = given;
    EXPECT_FALSE(commentLine(line, scenario()).value()) << given;
    EXPECT_EQ(line, left) << given;
  }
}

TEST(ControlLine, ReportsBadVariables) {
  const std::string delimiter =
      "ERROR 0014 - Variable Delimiter \">>\" non-existent or before \"<<\".";
  const struct {
    std::string given, line1, shown;
  } cases[] = {
      {"a <<grain", delimiter, "a <<grain"},
      {"a >> <<grain>> ", delimiter, "a >> <<grain>>"},
      {"a <<>> b", delimiter, "a <<>> b"},
      {" a <<Depth >> b ! c", "ERROR 0015 - Variable \"DEPTH\" not defined.", "a <<Depth >> b"},
      {"<<grain>> << grain>>", "ERROR 0015 - Variable \" GRAIN\" not defined.", "0.2 << grain>>"},
      {"a <<loop>>", "ERROR 0015 - Variable \"LOOP\" not defined.", "a <<loop>>"},
  };
  for (const auto& [given, line1, shown] : cases) {
    std::string line = given;
    const Outcome<bool> outcome = commentLine(line, scenario());
    ASSERT_FALSE(outcome) << given;
    EXPECT_EQ(outcome.report().line1, line1) << given;
    EXPECT_EQ(outcome.report().detail1, "Line: " + shown);
    EXPECT_EQ(outcome.report().blankLines, 1) << given;
  }
}

TEST(VariableTable, HoldsAHundredShortNames) {
  VariableTable variables;
  const std::string longName(120, 'n');

  EXPECT_TRUE(variables.add(longName, std::string(1200, 'v')));
  for (int i = 1; i < 100; ++i) EXPECT_TRUE(variables.add(std::to_string(i), "1"));
  EXPECT_FALSE(variables.add("late", "2"));

  // 100 characters of a name and 1000 of a value count.
  ASSERT_NE(variables.find(longName.substr(0, 100)), nullptr);
  EXPECT_EQ(variables.find(longName)->size(), 1000u);
  EXPECT_EQ(variables.find("late"), nullptr);
  variables.clear();
  EXPECT_TRUE(variables.empty());
}

}  // namespace
}  // namespace nivaro
