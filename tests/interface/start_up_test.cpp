#include "interface/start_up.hpp"

#include "interface/entry_points.hpp"
#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

TEST(StartUp, OpensItsFilesAndWritesTheBanner) {
  test::TempFolder folder;
  test::TestModule t;
  const std::string prefix = folder.path("Run_01");

  startUp(t.module, {.simulationName = "Run_01   ",
                     .outputPrefix = prefix + "   ",
                     .logPrefix = prefix + " ",
                     .gis = {.hostProjection = "COORDSYS"}});

  EXPECT_EQ(t.console.output,
            "\nTRANSFERRED TO MORPHOLOGY MODULE\n"
            "\nTrying to open (O) file " +
                prefix +
                ".mlf...OK.  File Unit:2001\n"
                "\nNIVARO MORPHOLOGY Module Build 2007-07-AA\n"
                "Support: " +
                std::string(kSupportAddress) +
                "\n"
                "\nTrying to open (O) file " +
                prefix +
                "_mor.wor...OK.  File Unit:2002\n"
                "\nTrying to open (BO) file " +
                prefix + "_morDH.dat...OK.  File Unit:2003\n");
  EXPECT_EQ(folder.read("Run_01.mlf"), "\nNIVARO MORPHOLOGY Module Build 2007-07-AA\nSupport: " +
                                           std::string(kSupportAddress) + "\n");
  EXPECT_EQ(folder.read("Run_01_mor.wor"),
            "!Workspace\n!Version 600\n!Charset WindowsLatin1\n"
            "!Contains morphology input layers from NIVARO simulation \"Run_01\"\n");
  EXPECT_EQ(t.module.record.log_unit, 2001);
  EXPECT_EQ(t.module.gisSettings.hostProjection, "COORDSYS");
  t.module.dataset.writeEnd();
  EXPECT_EQ(folder.bytes("Run_01_morDH.dat").size(), 4U);  // one card, from the first slot alone
}

void startRun(test::TestModule& t, const test::TempFolder& folder) {
  startUp(t.module, {.simulationName = "a",
                     .outputPrefix = folder.path("a"),
                     .logPrefix = folder.path("a"),
                     .gis = {}});
}

TEST(StartUp, WorkspaceIsClosedByTheLastDomainOnly) {
  test::TempFolder folder;
  test::TestModule t;
  startRun(t, folder);
  folder.write("a.mcf", "");
  std::vector<double> real(100);
  std::vector<std::int32_t> integer(10);
  std::int32_t nextReal = 1;
  std::int32_t nextInteger = 1;
  for (const std::int32_t domain : {1, 2}) {
    t.module.fields.reserve(domain, true, 2, 2, nextReal, nextInteger);
    readControlFile(t.module, {.controlFile = folder.path("a.mcf"),
                               .domain = domain,
                               .lastDomain = 2,
                               .n = 2,
                               .m = 2,
                               .work = {real.data(), integer.data()}});
    EXPECT_EQ(t.module.units.find(2002) != nullptr, domain == 1);
  }
}

TEST(StartUp, RunEndedLaterClosesEverythingAndPrompts) {
  test::TempFolder folder;
  test::TestModule t;
  startRun(t, folder);
  t.console.answers = {""};

  EXPECT_EQ(test::exitCodeOf([&] { t.module.termination.exits(); }), 1);
  for (const std::int32_t unit : {2001, 2002, 2003}) EXPECT_EQ(t.module.units.find(unit), nullptr);
  EXPECT_TRUE(t.console.output.ends_with("\nPress Enter to Close\n")) << t.console.output;
  EXPECT_TRUE(t.console.answers.empty());
}

}  // namespace
}  // namespace nivaro
