#include "text/command_line.hpp"

#include <gtest/gtest.h>

namespace nivaro {
namespace {

// Without the host's wish the line is taken and a warning given: tests/exports.
TEST(CommandLine, MissesItsSeparatorWhereTheHostIsStrict) {
  std::string keyword = "End If", line = "Set D50 0.2  ";
  const auto strict = commandLine(line, true);

  EXPECT_TRUE(commandLine(keyword, true));
  ASSERT_FALSE(strict);
  EXPECT_EQ(strict.report().line1, "ERROR 0060 - Command line is missing \"==\". ");
  EXPECT_EQ(strict.report().line2, "Problematic Line: SET D50 0.2");
}

}  // namespace
}  // namespace nivaro
