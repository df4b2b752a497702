#include "messages/diagnostics.hpp"

#include "support/test_module.hpp"

namespace nivaro {
namespace {

using DiagnosticsTest = test::ModuleTest;

TEST_F(DiagnosticsTest, FatalReportIsWrittenInWholeAndEndsTheRunButAValueIsGiven) {
  EXPECT_EQ(module.diagnostics.valueOf(Outcome<int>(7)), 7);
  const Outcome<int> failed(Report{.line1 = "ERROR 0010 - a",
                                   .line2 = "b",
                                   .line3 = "c",
                                   .detail1 = "d",
                                   .detail2 = "e",
                                   .detail3 = "f"});
  EXPECT_THROW(module.diagnostics.valueOf(failed), test::ProcessEnded);
  EXPECT_TRUE(console.output.starts_with("\nNoXY: ERROR 0010 - a\nb\nc\nd; e; f\n"));
}

}  // namespace
}  // namespace nivaro
