#include "interface/start_up.hpp"

#include "interface/entry_points.hpp"
#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

struct StartUp : testing::Test, test::TestModule {
  // Texts as a host passes them, blanks included.
  StartUp() {
    startUp(module, {.simulationName = "Run_01   ",
                     .outputPrefix = prefix + "   ",
                     .logPrefix = prefix + " ",
                     .gis = {.hostProjection = "COORDSYS"}});
  }

  test::TempFolder folder;
  std::string prefix = folder.path("Run_01");
};

TEST_F(StartUp, OpensItsFilesAndWritesTheBanner) {
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

TEST_F(StartUp, WorkspaceIsClosedByTheLastDomainOnly) {
  folder.write("a.mcf", "");
  std::vector<double> real(100);
  std::vector<std::int32_t> integer(10);
  std::int32_t nextReal = 1;
  std::int32_t nextInteger = 1;
  for (const std::int32_t domain : {1, 2}) {
    module.fields.reserve(domain, true, 2, 2, nextReal, nextInteger);
    readControlFile(module, {.controlFile = folder.path("a.mcf"),
                             .domain = domain,
                             .lastDomain = 2,
                             .n = 2,
                             .m = 2,
                             .work = {real.data(), integer.data()}});
    EXPECT_EQ(module.units.find(2002) != nullptr, domain == 1);
  }
}

TEST_F(StartUp, RunEndedLaterClosesEverythingAndPrompts) {
  console.answers = {""};
  EXPECT_EQ(test::exitCodeOf([&] { module.termination.exits(); }), 1);
  for (const std::int32_t unit : {2001, 2002, 2003}) EXPECT_EQ(module.units.find(unit), nullptr);
  EXPECT_TRUE(console.output.ends_with("\nPress Enter to Close\n")) << console.output;
  EXPECT_TRUE(console.answers.empty());
}

}  // namespace
}  // namespace nivaro
