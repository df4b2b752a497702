#include "files/file_units.hpp"

#include "files_fixture.hpp"
#include "platform/support.hpp"

namespace nivaro {
namespace {

using test::exitCodeOf;

struct FileUnitsTest : test::FilesTest {
  FileUnitsTest() { files.initFileUnits(2000); }

  std::int32_t open(const std::string& name, std::string_view mode = "O ") {
    return files.openFile(folder.path(name), mode, 1);
  }
};

TEST_F(FileUnitsTest, TakesTheLowestFreeUnit) {
  std::int32_t first = open("a");
  EXPECT_EQ(first, 2001);
  EXPECT_EQ(open("b"), 2002);
  files.closeFile(first);
  EXPECT_EQ(open("c", "O"), 2001);   // a mode without its trailing blank
  EXPECT_EQ(open("d", "ZZ"), 2003);  // an unknown mode keeps its slot without a file
  EXPECT_EQ(files.find(2003), nullptr);
  EXPECT_EQ(open("e"), 2004);

  files.initFileUnits(-5);  // a base below 9 is raised; open files are forgotten, but not closed
  EXPECT_EQ(open("f"), 10);
  EXPECT_NE(files.find(2002), nullptr);
}

TEST_F(FileUnitsTest, ClosesPoolUnitsInUseOnly) {
  std::int32_t unit = open("a");
  output.clear();
  for (const std::int32_t other : {0, -1, 7, 2000, 2002, 3000, 3001, -2147483647 - 1, 2147483647}) {
    std::int32_t variable = other;
    files.closeFile(variable);
    EXPECT_EQ(variable, other);
  }
  EXPECT_EQ(output, "");

  files.closeFile(unit);
  EXPECT_EQ(unit, 0);
  EXPECT_EQ(output, "...Closed File Unit:2001\n");
  EXPECT_EQ(files.find(2001), nullptr);
}

TEST_F(FileUnitsTest, CutsNamesAtAThousandCharacters) {
  // Of the "./" pairs that fill the name up, the cut leaves 1000 characters: a name that exists.
  std::string name = folder.path("");
  while (name.size() + 2 < 1000) name += "./";
  name += std::string(1000 - name.size(), 'n');
  EXPECT_EQ(files.openFile("   " + name + std::string(200, 'x'), "O ", 1), 2001);
  EXPECT_EQ(files.find(2001)->path().back(), 'n');
}

TEST_F(FileUnitsTest, EndsForABlankNameAndWhenAllUnitsAreTaken) {
  EXPECT_EQ(exitCodeOf([&] { files.openFile("   ", "I ", 1); }), 1);
  EXPECT_EQ(output, "\nEmpty filename specified.  Bailing out.  Please contact support " +
                        std::string(kSupportAddress) + ".\nPress Enter to Close\n");

  for (int i = 0; i < FileUnits::kSlots; ++i) EXPECT_NE(open("a", "ZZ"), 0);
  output.clear();
  EXPECT_EQ(exitCodeOf([&] { open("a"); }), 1);
  EXPECT_EQ(output, "No free file numbers.\n");
}

TEST_F(FileUnitsTest, ClosesEverythingAtExitWithoutAWord) {
  for (const auto& [name, mode] : {std::pair("a", "O "), {"b", "ZZ"}, {"c", "O "}})
    if (Unit* file = files.find(open(name, mode))) file->writeRecord(name);
  output.clear();

  files.closeAllAtExit();

  EXPECT_EQ(output, "");
  EXPECT_EQ(folder.read("a") + folder.read("c"), "a\nc\n");
  EXPECT_EQ(files.find(2001), nullptr);
  EXPECT_EQ(open("d"), 2004);  // the slots stay taken
}

}  // namespace
}  // namespace nivaro
