// What other programs may do with the module's files, and what becomes of files they keep to
// themselves.
#include "files/open_mode.hpp"
#include "files_fixture.hpp"
#include "locked_file.hpp"

namespace nivaro {
namespace {

using test::ForeignHandle;

constexpr DWORD kEverything = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

struct SharingTest : test::FilesTest {
  SharingTest() { files.initFileUnits(2000); }

  bool othersMay(DWORD access) { return ForeignHandle(path, access, kEverything).isOpen(); }
  // "<none>" where there is no further record.
  std::string nextRecord(std::int32_t unit) {
    std::string_view record;
    return files.find(unit)->readRecord(record) == ReadStatus::Ok ? std::string(record) : "<none>";
  }

  std::string path = folder.write("file", "first\r\n");
};

TEST_F(SharingTest, EachModeLetsOthersDoWhatItsRowSays) {
  for (const OpenMode& mode : kOpenModes) {
    std::int32_t unit = files.openFile(path, mode.code, 4);
    const bool isFree = mode.code == "I " || mode.code[0] == 'A' || mode.code[0] == 'S';
    EXPECT_TRUE(othersMay(GENERIC_READ)) << mode.code;
    EXPECT_EQ(othersMay(GENERIC_WRITE), isFree) << mode.code;
    EXPECT_EQ(othersMay(DELETE), isFree) << mode.code;
    files.closeFile(unit);
  }
}

TEST_F(SharingTest, AnInputFileMayGrowMeanwhile) {
  const std::int32_t unit = files.openFile(path, "I ", 1);
  EXPECT_EQ(nextRecord(unit), "first");
  EXPECT_EQ(nextRecord(unit), "<none>");
  ForeignHandle editor(path, FILE_APPEND_DATA, kEverything);
  EXPECT_TRUE(editor.write("second\r\n"));
  files.find(unit)->backspace();
  EXPECT_EQ(nextRecord(unit), "second");
}

// A viewer that lets others read only: the run waits, and goes on once the viewer is closed.
TEST_F(SharingTest, AnOutputFileOpenElsewhereIsWaitedFor) {
  ForeignHandle viewer(path, GENERIC_READ, FILE_SHARE_READ);
  console.answers = {""};
  EXPECT_EQ(test::exitCodeOf([&] { files.openFile(path, "O ", 1); }), 1);  // nobody answers twice
  EXPECT_TRUE(console.shows(" Another application or user maybe using it,"));
  EXPECT_EQ(folder.read("file"), "first\n");  // untouched so far

  viewer.release();
  const std::int32_t unit = files.openFile(path, "O ", 1);
  files.find(unit)->writeRecord("new");
  files.find(unit)->flush();
  EXPECT_EQ(folder.bytes("file"), "new\r\n");
}

}  // namespace
}  // namespace nivaro
