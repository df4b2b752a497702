// What no case shows: states that the module itself does not come to, and formats that it does not write.
#include "messages/diagnostics.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

using Messages = test::ModuleTest;

TEST_F(Messages, FatalReportIsWrittenInWholeAndEndsTheRunButAValueIsGiven) {
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

TEST_F(Messages, LayerWithoutADateWarnsOrEndsTheRun) {
  SaveDateCheck check(module.files, module.diagnostics, module.termination);
  LayerUnits layer;
  SaveDateQuestion question{.layer = "gone.mid", .table = "a.tab", .logUnit = module.logUnit};
  EXPECT_TRUE(check.run(question, layer));
  EXPECT_EQ(console.output,
            "Checking save date is later than that of a.tab...NOT OK\n"
            "WARNING 0004 - Could not access save date of \"gone.mid\" to check with \"a.tab\"\n");

  question.isError = true;
  EXPECT_THROW(check.run(question, layer), test::ProcessEnded);
  EXPECT_TRUE(
      shown("\"a.tab\"\n\nNOTE - If using NIVARO.exe, use CHECK MI SAVE DATE == "
            "WARNING or OFF to suppress check\n\n"));
}

TEST_F(Messages, ThousandthLayerTakesTheLastPlaceWithAWarning) {
  const std::string warning =
      "WARNING 0317 - Exceeded limit of input layers for MI workspace (.wor may not be complete)\n";
  module.workspace.open(folder.path("run_mor.wor"), "Run_01");
  console.output.clear();
  const auto enter = [&](const char* name) { module.workspace.enter(name, module.logUnit); };
  for (int layer = 1; layer < 1000; ++layer) enter(std::to_string(layer).c_str());
  EXPECT_EQ(console.output, "");

  enter("1000");
  enter("1001");
  enter("1000");  // forgotten for the one after it
  enter("999");
  enter("1000");
  EXPECT_EQ(console.output, warning + warning + warning);
  EXPECT_EQ(log(), console.output);
  const std::string last =
      "Open Table \"999\"\nOpen Table \"1000\"\nOpen Table \"1001\"\nOpen Table \"1000\"\n";
  EXPECT_TRUE(folder.read("run_mor.wor").ends_with(last));

  module.workspace.close();
  enter("after the last domain");
  EXPECT_TRUE(folder.read("run_mor.wor").ends_with(last));
}

}  // namespace
}  // namespace nivaro
