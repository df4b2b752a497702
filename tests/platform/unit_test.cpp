#include "platform/unit.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

#include "support/temp_folder.hpp"
#include "this_system.hpp"

namespace nivaro {
namespace {

using Form = OpenOptions::Form;
using Status = OpenOptions::Status;
using Action = OpenOptions::Action;
using Position = OpenOptions::Position;

constexpr OpenOptions kRead;
constexpr OpenOptions kReplace{Form::Formatted, Status::Replace, Action::Write};
constexpr OpenOptions kUpdate{Form::Formatted, Status::Unknown, Action::ReadWrite};

std::span<const std::byte> asBytes(std::string_view text) {
  return std::as_bytes(std::span(text));
}

struct UnitTest : testing::Test {
  void openToRead(std::string_view content) {
    ASSERT_EQ(unit.open(folder.write("file", content), kRead), "");
  }
  void open(const OpenOptions& options) { ASSERT_EQ(unit.open(folder.path("file"), options), ""); }

  // "<end>" and "<error>" stand for what is no record.
  std::string next() {
    std::string_view record;
    const ReadStatus status = unit.readRecord(record);
    if (status == ReadStatus::Ok) return std::string(record);
    return status == ReadStatus::End ? "<end>" : "<error>";
  }

  test::TempFolder folder;
  Unit unit;
};

const std::string kMark = "\xEF\xBB\xBF";

TEST_F(UnitTest, TakesLinesAsRecords) {
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"", {}},
      {"a\nb", {"a", "b"}},  // a last line without its end
      {"a\r\n\r\nb\r\n", {"a", "", "b"}},
      {"a\rb\nc\r", {"a\rb", "c"}},  // a carriage return elsewhere is a character like any other
      {"\n\n", {"", ""}},
      {kMark, {}},
      {kMark + "a\n" + kMark + "b\n", {"a", kMark + "b"}},  // only at the start it is a mark
      {std::string("a\0b\xFF\t\n", 6), {std::string("a\0b\xFF\t", 5)}},
  };
  for (const auto& [content, records] : cases) {
    openToRead(content);
    for (const std::string& record : records) {
      EXPECT_FALSE(unit.atEnd()) << content;
      EXPECT_EQ(next(), record) << content;
    }
    EXPECT_TRUE(unit.atEnd()) << content;
    EXPECT_EQ(next(), "<end>") << content;
  }
}

TEST_F(UnitTest, StepsBackARecordAtATime) {
  openToRead(kMark + "one\n\ntwo");
  unit.backspace();
  EXPECT_EQ(next(), "one");
  unit.backspace();
  EXPECT_EQ(next(), "one");
  EXPECT_EQ(next(), "");
  EXPECT_EQ(next(), "two");
  unit.backspace();
  EXPECT_EQ(next(), "two");
  EXPECT_EQ(next(), "<end>");
  EXPECT_EQ(next(), "<end>");

  unit.backspace();  // the end is undone first
  EXPECT_TRUE(unit.atEnd());
  unit.backspace();
  EXPECT_EQ(next(), "two");
  for (int i = 0; i < 5; ++i) unit.backspace();
  EXPECT_EQ(next(), "one");
}

// Every record start of a file of several buffers is found again, whichever side of a buffer's edge
// it lies on. Some records are longer than any buffer.
TEST_F(UnitTest, StepsBackAcrossBuffers) {
  const auto record = [](int i) {
    return std::to_string(i) +
           std::string(i % 10000 == 1 ? 200000U : static_cast<unsigned>(i) % 5, '.');
  };
  const int count = 30000;  // about 230 000 characters, but for the long ones
  std::string content;
  for (int i = 0; i < count; ++i) content += record(i) + '\n';
  openToRead(content);
  for (int i = 0; i < count; ++i) {
    ASSERT_EQ(next(), record(i));
    unit.backspace();
    ASSERT_EQ(next(), record(i));
  }
  for (int i = count - 1; i >= 0; --i, unit.backspace()) {
    unit.backspace();
    ASSERT_EQ(next(), record(i));
  }
  unit.rewind();
  EXPECT_EQ(next(), record(0));
}

TEST_F(UnitTest, SeesWhatOthersAddToAFileThatIsBeingRead) {
  openToRead("a\n");
  EXPECT_EQ(next(), "a");
  EXPECT_TRUE(unit.atEnd());
  std::ofstream(folder.path("file"), std::ios::app) << "b\n";
  EXPECT_FALSE(unit.atEnd());
  EXPECT_EQ(next(), "b");
}

TEST_F(UnitTest, RefusesWhatIsNoReadableFile) {
  EXPECT_EQ(unit.open(folder.path("missing"), kRead), "No such file or directory");
  EXPECT_EQ(unit.open(folder.path(""), kRead), "Is a directory");
  EXPECT_FALSE(unit.isOpen());
  EXPECT_TRUE(unit.atEnd());
  EXPECT_EQ(next(), "<error>");
  EXPECT_FALSE(unit.writeRecord("x"));
}

TEST_F(UnitTest, WritesRecordsAndBytes) {
  folder.write("file", "what was there before");
  open(kReplace);
  EXPECT_TRUE(unit.writeRecord("one"));
  EXPECT_TRUE(unit.writeBytes(asBytes("two")));
  EXPECT_EQ(folder.read("file"), "");
  EXPECT_TRUE(unit.flush());
  EXPECT_EQ(folder.read("file"), "one\ntwo");

  const std::string much(200'000, 'x');
  EXPECT_TRUE(unit.writeRecord(much));
  EXPECT_TRUE(unit.close());
  EXPECT_TRUE(folder.read("file") == "one\ntwo" + much + "\n");
}

TEST_F(UnitTest, OverwritesEarlierBytesAndGoesOnAtTheEnd) {
  open(kReplace);
  unit.writeBytes(asBytes("0123456789"));
  EXPECT_TRUE(unit.overwriteBytes(4, asBytes("xy")));
  unit.writeBytes(asBytes("!"));
  unit.close();
  EXPECT_EQ(folder.read("file"), "0123xy6789!");
}

TEST_F(UnitTest, AppendsAtTheEnd) {
  folder.write("file", "a");
  open({.status = Status::Unknown, .action = Action::Write, .position = Position::End});
  unit.writeRecord("b");
  unit.close();
  EXPECT_EQ(folder.read("file"), "ab\n");
}

TEST_F(UnitTest, ReadsAndWritesInTurn) {
  const std::string end(lineEnd());
  folder.write("file", "one" + end + "two" + end + "three" + end);
  open(kUpdate);
  EXPECT_EQ(next(), "one");
  unit.writeRecord("TWO");  // over the record that would be read next
  EXPECT_EQ(next(), "three");
  EXPECT_EQ(next(), "<end>");
  unit.writeRecord("four");
  unit.backspace();
  EXPECT_EQ(next(), "four");
  unit.rewind();
  EXPECT_EQ(next(), "one");
  EXPECT_EQ(next(), "TWO");
  unit.close();
  EXPECT_EQ(folder.read("file"), "one\nTWO\nthree\nfour\n");
}

TEST_F(UnitTest, KeepsAByteOrderMarkOfABinaryFile) {
  folder.write("file", kMark + "1234");
  open({Form::Binary});
  EXPECT_EQ(next(), kMark + "1234");
}

TEST_F(UnitTest, RemembersTheFirstFailedWrite) {
  if (!test::hasFullDisk()) GTEST_SKIP();
  ASSERT_EQ(unit.open(test::kFullDisk, kReplace), "");
  EXPECT_TRUE(unit.writeRecord("waits in the buffer"));
  EXPECT_EQ(unit.failure(), "");
  EXPECT_FALSE(unit.flush());
  EXPECT_EQ(unit.failure(), "No space left on device");
  EXPECT_FALSE(unit.writeRecord("dropped"));
  EXPECT_FALSE(unit.close());
  EXPECT_EQ(unit.failure(), "No space left on device");

  open(kReplace);
  EXPECT_EQ(unit.failure(), "");
}

}  // namespace
}  // namespace nivaro
