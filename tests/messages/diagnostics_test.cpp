#include "messages/diagnostics.hpp"

#include "support/test_module.hpp"
#include "this_system.hpp"

namespace nivaro {
namespace {

using DiagnosticsTest = test::ModuleTest;

TEST_F(DiagnosticsTest, FatalReportIsWrittenAndEndsTheRunButAValueIsGiven) {
  EXPECT_EQ(module.diagnostics.valueOf(Outcome<int>(7)), 7);
  const Outcome<int> failed(Report{.line1 = "ERROR 0010 - a", .detail1 = "where"});
  EXPECT_THROW(module.diagnostics.valueOf(failed), test::ProcessEnded);
  EXPECT_TRUE(console.output.starts_with("\nNoXY: ERROR 0010 - a\nwhere\n")) << console.output;
}

TEST_F(DiagnosticsTest, FailedWriteEndsTheRunAndNamesTheFile) {
  if (!test::hasFullDisk()) GTEST_SKIP();
  Unit* full = module.files.find(module.files.openFile(test::kFullDisk, "O ", 1));
  full->writeRecord("lost");
  module.diagnostics.requireWritten(full, "run.dat");  // still in the buffer
  full->flush();

  EXPECT_THROW(module.diagnostics.requireWritten(full, "run.dat"), test::ProcessEnded);
  EXPECT_TRUE(shown("ERROR - Could not write file \"run.dat\""));
}

}  // namespace
}  // namespace nivaro
