#include "messages/diagnostics.hpp"

#include <gtest/gtest.h>

#include <memory>

#include "support/test_process.hpp"

namespace nivaro {
namespace {

struct DiagnosticsTest : testing::Test {
  test::ScriptedConsole console;
  test::RecordingProcess process;
  std::unique_ptr<MessageRecord> record = std::make_unique<MessageRecord>();
  UnitTable units;
  Termination termination{console, process};
  MessageWriter messages{console, units, *record};
  Diagnostics diagnostics{console, messages, termination};
};

TEST_F(DiagnosticsTest, FatalReportIsWrittenAndEndsTheRun) {
  EXPECT_THROW(diagnostics.fatal({.line1 = "ERROR 0010 - a", .detail1 = "where"}),
               test::ProcessEnded);

  EXPECT_TRUE(console.output.starts_with("\nNoXY: ERROR 0010 - a\nwhere\n")) << console.output;
}

TEST_F(DiagnosticsTest, ValueOfGivesTheValueOrEndsTheRun) {
  EXPECT_EQ(diagnostics.valueOf(Outcome<int>(7)), 7);
  EXPECT_THROW(diagnostics.valueOf(Outcome<int>(Report{.line1 = "ERROR - x"})), test::ProcessEnded);
}

TEST_F(DiagnosticsTest, FailedWriteEndsTheRunAndNamesTheFile) {
  ASSERT_EQ(
      units.open(50, "/dev/full",
                 {.status = OpenOptions::Status::Unknown, .action = OpenOptions::Action::Write}),
      "");
  units.find(50)->writeRecord("lost");
  diagnostics.requireWritten(units.find(50), "run.dat");  // still in the buffer
  units.find(50)->flush();

  EXPECT_THROW(diagnostics.requireWritten(units.find(50), "run.dat"), test::ProcessEnded);
  EXPECT_NE(console.output.find("ERROR - Could not write file \"run.dat\""), std::string::npos);
}

}  // namespace
}  // namespace nivaro
