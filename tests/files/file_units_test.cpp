#include "files/file_units.hpp"

#include <gtest/gtest.h>

#include <string>

#include "platform/support.hpp"
#include "support/temp_folder.hpp"
#include "support/test_process.hpp"
#include "this_system.hpp"

namespace nivaro {
namespace {

using test::exitCodeOf;

class FileUnitsTest : public testing::Test {
 protected:
  FileUnitsTest() { files.initFileUnits(2000); }

  std::int32_t open(const std::string& name, std::string_view mode = "O ") {
    return files.openFile(folder.path(name), mode, 1);
  }

  test::TempFolder folder;
  test::ScriptedConsole console;
  test::RecordingProcess process;
  UnitTable units;
  Termination termination{console, process};
  FileUnits files{console, process, units, termination};
};

TEST_F(FileUnitsTest, TakesTheLowestFreeUnit) {
  std::int32_t first = open("a");
  EXPECT_EQ(first, 2001);
  EXPECT_EQ(open("b"), 2002);
  files.closeFile(first);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(open("c", "O"), 2001);  // a mode without its trailing blank
  files.initFileUnits(-5);          // a base below 9 is raised
  EXPECT_EQ(open("d"), 10);
}

TEST_F(FileUnitsTest, ClosesPoolUnitsInUseOnly) {
  std::int32_t unit = open("a");
  console.output.clear();
  for (const std::int32_t other : {0, -1, 7, 2000, 2002, 3000, 3001, -2147483647 - 1, 2147483647}) {
    std::int32_t variable = other;
    files.closeFile(variable);
    EXPECT_EQ(variable, other);
  }
  EXPECT_EQ(console.output, "");

  files.closeFile(unit);
  EXPECT_EQ(console.output, "...Closed File Unit:2001\n");
  EXPECT_EQ(files.find(2001), nullptr);
}

TEST_F(FileUnitsTest, KeepsTheSlotOfAnUnknownMode) {
  EXPECT_EQ(open("a", "ZZ"), 2001);
  EXPECT_EQ(files.find(2001), nullptr);
  EXPECT_EQ(open("b"), 2002);
}

TEST_F(FileUnitsTest, ForgetsOpenFilesWithoutClosingThem) {
  open("a");
  files.find(2001)->writeRecord("x");
  files.initFileUnits(3000);
  EXPECT_EQ(open("b"), 3001);
  EXPECT_NE(files.find(2001), nullptr);
}

TEST_F(FileUnitsTest, CutsNamesAtAThousandCharacters) {
  // Of the "./" pairs that fill the name up, the cut leaves 1000 characters: a name that exists.
  const std::string start = folder.path("");
  std::string name = start;
  while (name.size() + 2 < 1000) name += "./";
  name += std::string(1000 - name.size(), 'n');
  EXPECT_EQ(files.openFile("   " + name + std::string(200, 'x'), "O ", 1), 2001);
  EXPECT_EQ(files.find(2001)->path().back(), 'n');
}

TEST_F(FileUnitsTest, EndsForABlankName) {
  EXPECT_EQ(exitCodeOf([&] { files.openFile("   ", "I ", 1); }), 1);
  EXPECT_EQ(console.output, "\nEmpty filename specified.  Bailing out.  Please contact support " +
                                std::string(kSupportAddress) + ".\nPress Enter to Close\n");
}

TEST_F(FileUnitsTest, EndsWhenAllUnitsAreTaken) {
  for (int i = 0; i < FileUnits::kSlots; ++i) open("a", "ZZ");
  console.output.clear();
  EXPECT_EQ(exitCodeOf([&] { open("a"); }), 1);
  EXPECT_EQ(console.output, "No free file numbers.\n");
}

TEST_F(FileUnitsTest, ClosesEverythingAtExitWithoutAWord) {
  open("a");
  open("b", "ZZ");
  open("c");
  files.find(2001)->writeRecord("1");
  files.find(2003)->writeRecord("3");
  console.output.clear();

  files.closeAllAtExit();

  EXPECT_EQ(console.output, "");
  EXPECT_EQ(folder.read("a"), "1\n");
  EXPECT_EQ(folder.read("c"), "3\n");
  EXPECT_EQ(files.find(2001), nullptr);
  EXPECT_EQ(open("d"), 2004);  // the slots stay taken
}

TEST_F(FileUnitsTest, ReportsDataThatCouldNotBeWritten) {
  if (!test::hasFullDisk()) GTEST_SKIP();
  const std::string report = "Could not write all of /dev/full: No space left on device\n";
  std::int32_t unit = files.openFile(test::kFullDisk, "O ", 1);
  files.find(unit)->writeRecord("lost");
  console.output.clear();
  files.closeFile(unit);
  EXPECT_EQ(console.output, report + "...Closed File Unit:2001\n");
  EXPECT_EQ(unit, 0);

  unit = files.openFile(test::kFullDisk, "O ", 1);
  files.find(unit)->writeRecord("lost");
  console.output.clear();
  EXPECT_EQ(exitCodeOf([&] { files.closeAllAtExit(); }), 1);
  EXPECT_EQ(console.output, report);
}

}  // namespace
}  // namespace nivaro
