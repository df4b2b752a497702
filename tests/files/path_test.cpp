#include "files/path.hpp"

#include <gtest/gtest.h>

#include "text/blank_padded.hpp"

namespace nivaro {
namespace {

struct Part {
  std::string (*part)(std::string_view);
  std::string_view path;
  std::string_view expected;
};

TEST(Path, IsTakenApart) {
  const Part cases[] = {
      {fileExt, "C:\\Model\\Run.MIF", ".mif"},
      {fileExtKc, "C:\\Model\\Run.MIF", ".MIF"},
      {fileExt, "C:\\dir.old\\file", ""},  // a dot in the folder is no extension
      {fileExt, "a.b\\c/d.E", ".e"},       // the rightmost separator of either kind
      {fileExt, "name.", "."},
      {fileName, "C:\\dir\\.hidden", ".hidden"},
      {fileName, "C:\\dir\\.hidden.mif", ".hidden"},  // the last dot does not begin the name
      {fileName, ".mif", ""},
      {fileName, "a.b.c", "a.b"},
      {fileNameExt, "C:\\r/a.b.mif", "a.b.mif"},
      {fileNamePath, ".mif", ".mif"},
      {fileNamePath, "C:\\r\\.mif", "C:\\r\\"},  // stays whole only without a folder
      {fileNameNoTail, "C:\\run\\M01_5m_h.dat", "M01_5m"},
      {fileNameNoTail, "_h.dat", ""},
      {fileNameNoTail, "a_b\\run.dat", "run"},
      {fileTail, "C:\\run\\M01_5m_H.dat", "_h"},
      {fileTail, "a_b\\run.dat", ""},
      {fileTail, "run_.dat", "_"},
      {fileNamePathNoTail, "C:\\run\\M01_5m_h.dat", "C:\\run\\M01_5m"},
      {fileNamePathNoTail, "C:\\my_run\\M01.dat", "C:\\my_run\\M01"},
      {fileNamePathNoTail, "C:\\_h.dat", "C:\\"},
      {fileNamePathNoTail, "_h.dat", "_h"},
      {fileFolderPath, "../mi/x.mif", "../mi/"},
      {dosPath, " a/b", " a\\b"},
      {correctSlash, "  a/b", "a/b"},
  };
  for (const auto& [part, path, expected] : cases) {
    EXPECT_EQ(part(path), expected) << path;
    EXPECT_EQ(part(padTo(path, 60)), expected) << path << " in a longer buffer";
  }
}

TEST(Path, IsNormalised) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"C:/a/b/../c/./d.txt", "C:\\a\\c\\d.txt"},
      {"a\\b\\..\\c", "a\\c"},
      {"b\\..\\c", "c"},
      {"x\\y\\..\\..\\z", "z"},
      {"..\\x\\..\\y", "..\\y"},
      {"..\\..\\x", "..\\..\\x"},
      {"..\\..\\x\\..\\y", "..\\..\\y"},  // past the chain the search goes on
      // The last reference of the chain shares its backslash with the one passed over, which is why
      // the search gets to the one behind "x".
      {"..\\..\\..\\x\\..\\y", "..\\..\\..\\y"},
      {"\\..\\a\\..\\b", "\\..\\a\\..\\b"},  // one at the very start ends the search
      {"\\\\srv\\a\\..\\b", "\\\\srv\\b"},
      {"\\\\srv\\\\a", "\\\\srv\\\\a"},  // pairs behind a leading one stay
      {"a\\\\b", "a\\\\b"},              // a pair at position 2 counts as leading
      {"ab\\\\\\c", "ab\\c"},
      {"a\\.\\.\\b", "a\\b"},
      {".\\a", ".\\a"},    // nothing before the dot
      {"a\\..\\ b", "b"},  // a blank that comes to the front goes
      {"  a/b  ", "a\\b"},
  };
  for (const auto& [path, expected] : cases) EXPECT_EQ(removeDotDot(path), expected) << path;
}

TEST(Path, IsPlacedInAFolder) {
  const struct {
    std::string_view folder, file, expected;
  } cases[] = {
      {"C:\\m\\", "..\\mi\\a.mif", "C:\\mi\\a.mif"},
      {"C:\\m", "a.mif", "C:\\m\\a.mif"},
      {"C:/m/", " a.mif ", "C:\\m\\a.mif"},
      {"C:\\m", "\\a.mif", "C:\\m\\a.mif"},  // a file from the root is appended all the same
      {"C:\\m", "D:\\x.mif", "D:\\x.mif"},
      {"C:\\m", "\\\\srv\\x.mif", "\\\\srv\\x.mif"},
      {"", " a/b.mif", "a\\b.mif"},
      {"  C:\\m ", "  ", "C:\\m"},
      {" ", "", "."},
  };
  for (const auto& [folder, file, expected] : cases) {
    EXPECT_EQ(addFolder(folder, file), expected) << folder << " + " << file;
  }
}

TEST(Path, IsCutByTheRoutinesThatTidy) {
  const std::string longPath(1200, 'a');
  std::string cleaned = "  " + longPath;

  EXPECT_EQ(removeDotDot(longPath).size(), 1000u);
  EXPECT_EQ(addFolder("f", longPath).size(), 1000u);
  EXPECT_EQ(cleanPath(cleaned).size(), 1000u);
}

TEST(Path, IsCleanedInPlace) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"  C:\\\\a//b", "C:\\a/b"},
      {"\\\\server\\share", "\\\\server\\share"},
      {"\\\\server\\\\share//x", "\\\\server\\\\share/x"},  // the other character's pairs go
      {"a////b", "a/b"},
      {"", ""},
  };
  for (const auto& [given, expected] : cases) {
    std::string path = padTo(given, 40);
    EXPECT_EQ(cleanPath(path), expected) << given;
    EXPECT_EQ(path, expected) << given;
  }
}

TEST(Path, ChangesDriveOnlyWhereThereIsOne) {
  const struct {
    std::string_view path, drive, expected;
  } cases[] = {
      {"C:\\x", "E", "E:\\x"}, {"\\\\srv\\x", "E", "\\\\srv\\x"},
      {"x.mif", "E", "x.mif"}, {"C:\\x", " ", "C:\\x"},
      {"C", "E", "C"},         {"", "E", ""},
      {"C:", "E", "E:"},
  };
  for (const auto& [given, drive, expected] : cases) {
    std::string path(given);
    changeDrive(path, drive);
    EXPECT_EQ(path, expected) << given;
  }
}

}  // namespace
}  // namespace nivaro
