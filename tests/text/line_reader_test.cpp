#include "text/line_reader.hpp"

#include <gtest/gtest.h>

#include "support/temp_folder.hpp"
#include "support/test_process.hpp"

namespace nivaro {
namespace {

struct LineReader : testing::Test {
  void file(std::string_view content) {
    EXPECT_EQ(unit_.open(folder_.write("lines.mcf", content), OpenOptions()), "");
  }

  Outcome<bool> next(std::size_t width = 1000, bool echo = false) {
    return readLine(&unit_, 2000, width, line_, variables_, echo, console_);
  }

  test::TempFolder folder_;
  test::ScriptedConsole console_;
  VariableTable variables_;
  Unit unit_;
  std::string line_;
};

TEST_F(LineReader, GivesCommandsSkipsCommentsAndCutsAtTheWidth) {
  variables_.add("long", std::string(30, 'v'));
  file("  D50 == 0.2 ! sand\r\n# note\n\n\t! tab\nSet\tD50 == 1\n<<long>>");

  EXPECT_TRUE(next().value());
  EXPECT_EQ(line_, "D50 == 0.2 ");
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(next().value());
  EXPECT_TRUE(next(8).value());
  EXPECT_EQ(line_, "SetD50 ");    // cut before tabs go
  EXPECT_TRUE(next(10).value());  // a last line without a line end
  EXPECT_EQ(line_, std::string(10, 'v'));
}

TEST_F(LineReader, EchoesWhatItReads) {
  file("  a\tb ! c  \n");
  EXPECT_TRUE(next(1000, true).value());
  EXPECT_EQ(console_.output, ">>   a\tb ! c\n");
}

TEST_F(LineReader, ReportsWhatCannotBeRead) {
  file("<<name\n");
  variables_.add("name", "x");
  const auto noUnit = readLine(nullptr, 123456, 1000, line_, variables_, false, console_);

  EXPECT_EQ(next().report().detail1, "Line: <<name");
  EXPECT_EQ(next().report().line1,
            "ERROR 0202 - End-of-file encountered reading text line from file unit number 2000");
  EXPECT_EQ(noUnit.report().line1,
            "ERROR 0201 - Reading text line from file unit number*****");  // five columns
}

TEST_F(LineReader, TriesARecordForItsFirstItem) {
  file("\"first item\" second\nlast\n");
  std::string item;
  EXPECT_FALSE(eofLineRead(&unit_, item));
  EXPECT_EQ(item, "first item");
  EXPECT_FALSE(eofLineRead(&unit_, item));
  EXPECT_TRUE(eofLineRead(&unit_, item));
  EXPECT_TRUE(eofLineRead(nullptr, item));
}

}  // namespace
}  // namespace nivaro
