#include "interface/start_up.hpp"

#include <filesystem>

#include "platform/support.hpp"
#include "support/test_module.hpp"

namespace nivaro {
namespace {

struct StartUp : testing::Test, test::TestModule {
  // Texts as a host passes them, blanks included.
  void start(std::string_view processor = "") {
    startUp(module, {.simulationName = "Run_01   ",
                     .outputPrefix = prefix + "   ",
                     .logPrefix = prefix + " ",
                     .gis = {.hostProjection = "COORDSYS"},
                     .processor = processor});
  }

  test::TempFolder folder;
  std::string prefix = folder.path("Run_01");
};

TEST_F(StartUp, AWordOfTheUserChoosesTheFormatOfTheMessagesLayers) {
  const struct {
    std::string_view word;
    bool isMif, isShape, isUnknown;
  } cases[] = {{"", true, false, false},
               {"mif", true, false, false},
               {" SHP ", false, true, false},
               {"Both", true, true, false},
               {"shape", true, false, true}};
  record->message_layer = 1;
  // As of a host that starts its next run in the same process: the layers are the new run's.
  for (const auto& [word, isMif, isShape, isUnknown] : cases) {
    SCOPED_TRACE(word);
    const std::string run = prefix + std::string(word) + ".";
    startUp(module, {.simulationName = "",
                     .outputPrefix = run,
                     .logPrefix = run,
                     .gis = {},
                     .messageLayers = word,
                     .processor = ""});
    EXPECT_EQ(console.shows("WARNING 0438 - NIVARO_MESSAGE_LAYERS is \"" + std::string(word) +
                            "\", which is not \"mif\", \"shp\" or \"both\".\n"),
              isUnknown);
    setField(record->line1, "ERROR - a");
    module.messages.dmessageXy(0, 1.0, 2.0);

    EXPECT_EQ(std::filesystem::exists(run + "_messages.mif"), isMif);
    EXPECT_EQ(std::filesystem::exists(run + "_messages_P.shp"), isShape);
    EXPECT_EQ(std::filesystem::exists(run + "_messages.qgs"), isShape);
    EXPECT_FALSE(std::filesystem::exists(run + "_messages_L.shp"));  // messages are points
  }
}

TEST_F(StartUp, LetsTheUserChooseWhatComputesSteps) {
  start(" Plain ");
  EXPECT_EQ(module.stepWorkspace.processor(), Processor::Plain);
  EXPECT_TRUE(console.shows("\nNIVARO_PROCESSOR: morphology steps run on plain\n"));
  prefix = folder.path("Run_02");
  start("fast");
  EXPECT_TRUE(console.shows("WARNING 0440 - NIVARO_PROCESSOR is \"fast\", which is no kind"));
}

}  // namespace
}  // namespace nivaro
