#include "interface/start_up.hpp"

#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

struct StartUp : testing::Test, test::TestModule {
  // Texts as a host passes them, blanks included.
  void start() {
    startUp(module, {.simulationName = "Run_01   ",
                     .outputPrefix = prefix + "   ",
                     .logPrefix = prefix + " ",
                     .gis = {.hostProjection = "COORDSYS"}});
  }

  test::TempFolder folder;
  std::string prefix = folder.path("Run_01");
};

TEST_F(StartUp, OpensItsFilesAndWritesTheBanner) {
  start();
  const std::string banner =
      "\nNIVARO MORPHOLOGY Module Build 2007-07-AA\nSupport: " + std::string(kSupportAddress) +
      "\n";
  EXPECT_EQ(console.output,
            "\nTRANSFERRED TO MORPHOLOGY MODULE\n"
            "\nTrying to open (O) file " +
                prefix + ".mlf...OK.  File Unit:2001\n" + banner + "\nTrying to open (O) file " +
                prefix +
                "_mor.wor...OK.  File Unit:2002\n"
                "\nTrying to open (BO) file " +
                prefix + "_morDH.dat...OK.  File Unit:2003\n");
  EXPECT_EQ(folder.read("Run_01.mlf"), banner);
  EXPECT_EQ(folder.read("Run_01_mor.wor"),
            "!Workspace\n!Version 600\n!Charset WindowsLatin1\n"
            "!Contains morphology input layers from NIVARO simulation \"Run_01\"\n");
  EXPECT_EQ(record->log_unit, 2001);
  EXPECT_EQ(module.gisSettings.hostProjection, "COORDSYS");
  module.dataset.writeEnd();
  EXPECT_EQ(folder.bytes("Run_01_morDH.dat").size(), 4U);  // one card, from the first slot alone
}

TEST_F(StartUp, LetsTheUserChooseWhatComputesSteps) {
  process.variables["NIVARO_PROCESSOR"] = "plain";
  start();
  EXPECT_EQ(module.stepWorkspace.processor(), Processor::Plain);
  EXPECT_TRUE(console.shows("\nNIVARO_PROCESSOR: morphology steps run on plain\n"));
}

TEST_F(StartUp, WarnsOfAKindOfProcessorThatDoesNotExist) {
  process.variables["NIVARO_PROCESSOR"] = "Plain";
  start();
  EXPECT_EQ(module.stepWorkspace.processor(), bestProcessor());
  EXPECT_TRUE(console.shows("WARNING - NIVARO_PROCESSOR names no kind of processor"));
}

}  // namespace
}  // namespace nivaro
