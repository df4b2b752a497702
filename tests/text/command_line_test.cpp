#include "text/command_line.hpp"

#include <gtest/gtest.h>

namespace nivaro {
namespace {

TEST(CommandLine, SplitsAtTheFirstSeparator) {
  std::string line = "Morphology D50 == 0.2 == x ";
  const auto split = commandLine(line, true);

  ASSERT_TRUE(split);
  EXPECT_EQ(split.value().command, "Morphology D50 ");
  EXPECT_EQ(split.value().value, " 0.2 == x ");
  EXPECT_FALSE(split.value().warning);
  EXPECT_EQ(line, "Morphology D50 == 0.2 == x ");
}

TEST(CommandLine, TakesBlockKeywordsWithoutSeparator) {
  for (const std::string given :
       {"end if", "Else", "Else If x, end if", "End 1D Domain ", "End 2D Domain", "End Define",
        "Interpolate Zpts", "Start 1D Domain", "stop", "Vorle Control File Auto",
        "Write Check File All", "Write Check Files None", "Output File None"}) {
    std::string line = given;
    const auto split = commandLine(line, true);
    ASSERT_TRUE(split) << given;
    EXPECT_EQ(split.value().command, line);
    EXPECT_EQ(split.value().value, "") << given;
    EXPECT_FALSE(split.value().warning) << given;
  }
  for (std::string line : {"else if x", "Start 2D Domain", "Vorle Control File", "Write Check File",
                           "Output File Some", "Set D50 = 0.2"})
    EXPECT_FALSE(commandLine(line, true)) << line;
}

TEST(CommandLine, ReportsAMissingSeparator) {
  std::string line = "Set D50 0.2  ";
  const auto lenient = commandLine(line, false);
  ASSERT_TRUE(lenient);
  EXPECT_EQ(line, "SET D50 0.2");
  EXPECT_EQ(lenient.value().command, line);
  ASSERT_TRUE(lenient.value().warning);
  EXPECT_EQ(lenient.value().warning->line1, "WARNING 0060 - Command line is missing \"==\". ");
  EXPECT_EQ(lenient.value().warning->line2, "Problematic Line: SET D50 0.2");

  const auto strict = commandLine(line, true);
  ASSERT_FALSE(strict);
  EXPECT_EQ(strict.report().line1, "ERROR 0060 - Command line is missing \"==\". ");
  EXPECT_EQ(strict.report().line2, "Problematic Line: SET D50 0.2");
}

TEST(CheckLine, SplitsBySeparatorOrColumn) {
  const struct {
    std::string_view line, flag, separator;
    std::int32_t column;
    bool holdsFlag;
    std::string_view command, value;
  } cases[] = {
      {"Grid Size: 5", "size", ": ", 0, true, "Grid Size", " 5"},
      {"Grid Size: 5", "grid", "", 4, true, "Grid", " Size: 5"},
      {"Grid Size 5", "size", ":", 0, true, "Grid Size 5", ""},   // all command
      {"Grid Size 5", "size", ":", 4, false, "Grid", " Size 5"},  // the flag is in the value
      {"Grid", "grid", "", 99, true, "Grid", ""},
      {"Grid", "*", "", -1, false, "", "Grid"},
      {": 5", "*", ":", 0, false, "", " 5"},  // the separator is there, the command is not
      {"x: 5", "*  ", ":", 0, true, "x", " 5"},
      {"   ", "*", ":", 0, true, "   ", ""},
      {"   ", "*", ":", 2, false, "  ", " "},
      {"Grid", "*", "", 0, true, "", "Grid"},
  };
  for (const auto& [line, flag, separator, column, holdsFlag, command, value] : cases) {
    const CheckedLine checked = checkLine(line, flag, separator, column);
    EXPECT_EQ(checked.holdsFlag, holdsFlag) << line << " / " << flag;
    EXPECT_EQ(checked.command, command) << line;
    EXPECT_EQ(checked.value, value) << line;
  }
}

}  // namespace
}  // namespace nivaro
