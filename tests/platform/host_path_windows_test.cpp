#include "platform/host_path.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/file_status.hpp"
#include "platform/unit.hpp"
#include "support/temp_folder.hpp"

namespace nivaro {
namespace {

namespace fs = std::filesystem;

std::string withSlashes(std::string path) {
  for (char& c : path)
    if (c == '\\') c = '/';
  return path;
}

// One file by every kind of name that leads to it.
TEST(HostPathWindows, FindsAFileByEveryKindOfName) {
  const test::TempFolder folder;
  const std::string full = folder.write("Run_01.MIF", "x");  // begins with a drive and a backslash
  ASSERT_EQ(full.substr(1, 2), ":\\");
  fs::current_path(folder.path(""));
  const std::string drive = full.substr(0, 2);
  const std::string names[] = {
      full,
      withSlashes(full),
      "run_01.mif",
      ".\\RUN_01.mif",
      drive + "run_01.mif",  // relative to the drive's own folder
      full.substr(2),        // from the root of the drive
      "\\\\?\\" + full,
  };
  for (const std::string& name : names) {
    EXPECT_TRUE(hostPath(name).exists) << name;
    EXPECT_EQ(hostPath(name).path, name);
    Unit unit;
    EXPECT_EQ(unit.open(name, {}), "") << name;
    EXPECT_TRUE(unit.isOpenOn(full)) << name;
    EXPECT_TRUE(saveDate(name)) << name;
  }
  fs::current_path(fs::path(drive + "\\"));
  EXPECT_FALSE(hostPath(folder.path("")).exists);
}

TEST(HostPathWindows, MakesPathsAbsolute) {
  const test::TempFolder folder;
  fs::current_path(folder.path(""));
  const std::string drive = folder.path("").substr(0, 2);
  EXPECT_EQ(absolutePath("a/b\\..\\c"), folder.path("a\\c"));
  EXPECT_EQ(absolutePath(drive + "c"), folder.path("c"));
  EXPECT_EQ(absolutePath("\\x"), drive + "\\x");
  EXPECT_EQ(absolutePath("\\\\server\\share/a\\.\\b"), "\\\\server\\share\\a\\b");
  fs::current_path(fs::path(drive + "\\"));
}

// UTF-8 and the ANSI code page (Windows-1252 where Wine runs in no other): "Köln" in each.
TEST(HostPathWindows, TakesNamesInUtf8AndInTheAnsiCodePage) {
  const test::TempFolder folder;
  const std::string base = folder.path("");
  EXPECT_TRUE(createFolder(base + "K\xC3\xB6ln"));
  EXPECT_TRUE(fs::is_directory(fs::path(base) / L"K\u00F6ln"));
  EXPECT_TRUE(folderExists(base + "K\xF6ln"));
  EXPECT_EQ(absolutePath(base + "K\xF6ln"), base + "K\xC3\xB6ln");
}

TEST(HostPathWindows, CreatesAndReachesWhatLiesBeyondTheClassicLength) {
  const test::TempFolder folder;
  const std::string level = "/" + std::string(100, 'x');
  const std::string deep = folder.path("") + level + level + level;
  EXPECT_FALSE(folderExists(deep));
  EXPECT_TRUE(createFolder(deep + "/"));
  EXPECT_TRUE(folderExists(deep));

  Unit unit;
  EXPECT_EQ(unit.open(deep + "/file", {.status = OpenOptions::Status::Replace,
                                       .action = OpenOptions::Action::Write}),
            "");
  EXPECT_TRUE(hostPath(deep + "\\FILE").exists);
  unit.close();
}

TEST(HostPathWindows, ReportsAFolderThatCannotBeCreated) {
  const test::TempFolder folder;
  EXPECT_TRUE(folderExists(""));
  EXPECT_FALSE(createFolder(folder.write("file", "") + "\\sub"));
  EXPECT_FALSE(createFolder("\\\\no_such_server\\share\\folder"));
}

}  // namespace
}  // namespace nivaro
