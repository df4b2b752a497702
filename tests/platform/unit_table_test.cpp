#include "platform/unit_table.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

#include "support/temp_folder.hpp"

namespace nivaro {
namespace {

constexpr OpenOptions kRead;
constexpr OpenOptions kReplace{OpenOptions::Form::Formatted, OpenOptions::Status::Replace,
                               OpenOptions::Action::Write};

TEST(UnitTable, KnowsAFileByWhateverName) {
  const test::TempFolder folder;
  std::filesystem::create_hard_link(folder.write("file", ""), folder.path("link"));
  UnitTable units;
  ASSERT_EQ(units.open(2001, folder.path("file"), kReplace), "");

  EXPECT_EQ(units.numberOf(folder.path("link")), 2001);
  EXPECT_EQ(units.numberOf(folder.path("./file")), 2001);
  EXPECT_EQ(units.numberOf(folder.path("other")), std::nullopt);
  units.close(2001);
  EXPECT_EQ(units.numberOf(folder.path("file")), std::nullopt);
}

TEST(UnitTable, ForgetsANumberWhoseFileDidNotOpen) {
  const test::TempFolder folder;
  UnitTable units;
  EXPECT_NE(units.open(2001, folder.path("missing"), kRead), "");
  EXPECT_EQ(units.find(2001), nullptr);
  EXPECT_TRUE(units.close(2001));
}

TEST(UnitTable, ShowsAReaderWhatAnotherUnitHasWritten) {
  const test::TempFolder folder;
  UnitTable units;
  units.open(2001, folder.path("file"), kReplace);
  units.find(2001)->writeRecord("written");
  units.open(2002, folder.path("file"), kRead);
  std::string_view record;
  EXPECT_EQ(units.find(2002)->readRecord(record), ReadStatus::Ok);
  EXPECT_EQ(record, "written");
}

TEST(UnitTable, LeavesWholeFilesBehind) {
  const test::TempFolder folder;
  {
    UnitTable units;
    units.open(2001, folder.path("first"), kReplace);
    units.find(2001)->writeRecord("1");
    units.open(2002, folder.path("second"), kReplace);
    units.find(2002)->writeRecord("2");
    units.flushAll();
    EXPECT_EQ(folder.read("first"), "1\n");
    units.open(2001, folder.path("third"), kReplace);  // another file on a number in use
    units.find(2002)->writeRecord("3");
  }
  EXPECT_EQ(folder.read("first"), "1\n");
  EXPECT_EQ(folder.read("second"), "2\n3\n");
}

}  // namespace
}  // namespace nivaro
