#include "files/file_units.hpp"

#include "files/open_mode.hpp"
#include "files_fixture.hpp"

namespace nivaro {
namespace {

using FileUnitsTest = test::FilesTest;

TEST_F(FileUnitsTest, OpenEveryModeAsItsRowSays) {
  files.initFileUnits(2000);
  for (const OpenMode& mode : kOpenModes) {
    const std::string code(mode.code);
    SCOPED_TRACE(code);
    const bool keeps =
        mode.isInput || code[0] == 'A' || code[0] == 'S' || code[0] == 'D' || code == "IO";
    const std::string path = folder.write("file", "kept");
    std::int32_t unit = files.openFile(path, code, 12);
    ASSERT_NE(files.find(unit), nullptr);
    const OpenOptions& options = files.find(unit)->options();
    EXPECT_EQ(options.recordLength, mode.callersLength ? 12 : code == "DX" ? 4 : 0);
    EXPECT_EQ(options.bigEndian, code[1] == 'E' || code == "BN");
    EXPECT_EQ(options.position == OpenOptions::Position::End, code[0] == 'A');
    files.closeFile(unit);
    EXPECT_EQ(folder.read("file"), keeps ? "kept" : "");

    if (mode.isInput || code == "DX") continue;  // these create nothing
    std::filesystem::remove(path);
    files.closeFile(unit = files.openFile(path, code, 12));
    EXPECT_TRUE(std::filesystem::exists(path));
  }
}

TEST_F(FileUnitsTest, EndTheRunByHooksThatRunOnceEachAlsoWhenOneEndsTheRunItself) {
  std::string ran;
  termination.addHook([&] {
    ran += "first ";
    termination.exits();
  });
  termination.addHook([&] { ran += "second "; });
  for (int k = 0; k < 2; ++k) test::exitCodeOf([&] { termination.exits(); });
  EXPECT_EQ(ran, "first second ");
}

}  // namespace
}  // namespace nivaro
