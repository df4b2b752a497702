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

struct UnitTableTest : testing::Test {
  const test::TempFolder folder;
  UnitTable units;
};

TEST_F(UnitTableTest, KnowsAFileByWhateverNameAndForgetsANumberWithoutOne) {
  std::filesystem::create_hard_link(folder.write("file", ""), folder.path("link"));
  ASSERT_EQ(units.open(2001, folder.path("file"), kReplace), "");
  EXPECT_EQ(units.numberOf(folder.path("link")), 2001);
  EXPECT_EQ(units.numberOf(folder.path("./file")), 2001);
  EXPECT_EQ(units.numberOf(folder.path("other")), std::nullopt);
  units.close(2001);
  EXPECT_EQ(units.numberOf(folder.path("file")), std::nullopt);

  EXPECT_NE(units.open(2001, folder.path("missing"), kRead), "");
  EXPECT_EQ(units.find(2001), nullptr);
  EXPECT_TRUE(units.close(2001));
}

TEST_F(UnitTableTest, ShowsReadersWhatOtherUnitsHaveWritten) {
  units.open(2001, folder.path("file"), kReplace);
  units.find(2001)->writeRecord("written");
  units.open(2002, folder.path("file"), kRead);
  std::string_view record;
  EXPECT_EQ(units.find(2002)->readRecord(record), ReadStatus::Ok);
  EXPECT_EQ(record, "written");

  units.find(2001)->writeRecord("more");
  units.flushAll();
  EXPECT_EQ(folder.read("file"), "written\nmore\n");
  units.find(2001)->writeRecord("last");
  units.open(2001, folder.path("other"), kReplace);  // another file on a number in use
  EXPECT_EQ(folder.read("file"), "written\nmore\nlast\n");
}

}  // namespace
}  // namespace nivaro
