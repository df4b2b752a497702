#include "messages/mif_layer_opener.hpp"

#include <chrono>
#include <filesystem>
#include <functional>

#include "support/test_module.hpp"

namespace nivaro {
namespace {

constexpr const char* kHeader =
    "Version 300\nCoordSys Earth Projection 8, 33, \"m\"\nColumns 1\n  v Float\nData\n\n";

struct LayerOpener : test::ModuleTest {
  LayerOpener() {
    workspace.open(folder.path("run_mor.wor"), "Run_01");
    folder.write("sand.mif", kHeader);
    folder.write("sand.mid", "1\n");
    console.output.clear();
  }

  LayerUnits open(std::string_view name, LayerFiles kind = LayerFiles::Pair) {
    return opener.openInput(folder.path(name), kind, module.logUnit);
  }

  // Saved `seconds` after a fixed time.
  void save(std::string_view name, int seconds) const {
    const auto base = std::filesystem::last_write_time(folder.path("run.mlf"));
    std::filesystem::last_write_time(folder.path(name), base + std::chrono::seconds(seconds));
  }

  // A table saved long after its layer, where that is an error.
  void makeOld() {
    settings = {.checkSaveDate = true, .tableExtension = ".tab", .saveDateIsError = true};
    folder.write("sand.tab", "");
    save("sand.tab", 10);
    save("sand.mid", 0);
  }

  std::string entries() const {
    const std::string text = folder.read("run_mor.wor");
    return text.substr(std::min(text.find("Open Table"), text.size()));
  }

  std::string entry(std::string_view name) const {
    return "Open Table \"" + folder.path(name) + "\"\n";
  }

  FileUnits& files = module.files;
  WorkspaceList& workspace = module.workspace;
  GisSettings& settings = module.gisSettings;
  MifLayerOpener& opener = module.layerOpener;
};

TEST_F(LayerOpener, EitherFileOrNoExtensionNamesThePairWhichIsEnteredOnce) {
  for (const char* name : {"sand.MIF", "sand.mid", "sand", "  sand.Mid"}) {
    LayerUnits layer = opener.openInput(
        std::string(name).replace(std::string(name).find("sand"), 0, folder.path("")),
        LayerFiles::Pair, module.logUnit);
    EXPECT_EQ(files.find(layer.mif)->path(), folder.path("sand.mif")) << name;
    EXPECT_EQ(files.find(layer.data)->path(), folder.path("sand.mid")) << name;
    opener.close(layer);
    EXPECT_EQ(layer.mif, 0);
  }
  // The entry is the name as the caller gave it, leading blanks included.
  EXPECT_EQ(entries(), entry("sand") + "Open Table \"  " + folder.path("sand") + "\"\n");
}

TEST_F(LayerOpener, SingleFilesAreLayersOnlyAsMid) {
  folder.write("cells.csv", "");
  EXPECT_EQ(files.find(open("cells.csv", LayerFiles::Single).data)->path(),
            folder.path("cells.csv"));
  EXPECT_EQ(entries(), "");

  const LayerUnits layer = open("sand.MID", LayerFiles::Single);
  EXPECT_EQ(layer.mif, 0);
  EXPECT_EQ(entries(), entry("sand"));
}

TEST_F(LayerOpener, OutputGetsNoChecksAndNoEntry) {
  settings = {.checkSaveDate = true,
              .tableExtension = ".tab",
              .saveDateIsError = true,
              .hostProjection = "COORDSYSNONEARTHUNITSM",
              .projectionIsError = true};
  folder.write("check.TAB", "");

  LayerUnits layer = opener.openOutput(folder.path("check"));

  EXPECT_NE(files.find(layer.mif), nullptr);
  opener.close(layer);
  EXPECT_EQ(folder.read("check.mid"), "");
  EXPECT_EQ(entries(), "");
  EXPECT_FALSE(shown("Checking"));
}

TEST_F(LayerOpener, SameOrNoProjectionPassesHoweverItIsWritten) {
  settings = {.hostProjection = "COORDSYSEARTHPROJECTION8,33,M   ", .projectionIsError = true};
  folder.write("sand.mif",
               "VERSION 450\n\tCOORDSYS earth  PROJECTION\t8,33, 'm'\nColumns 1\nData\n");

  const LayerUnits layer = open("sand");
  settings.hostProjection = " \t  ";
  open("sand");  // asks nothing

  EXPECT_FALSE(shown("0305"));
  std::string_view first;
  files.find(layer.mif)->readRecord(first);
  EXPECT_EQ(first, "VERSION 450") << "the file is rewound";
}

TEST_F(LayerOpener, OtherProjectionWarnsOrEndsTheRun) {
  settings.hostProjection = "COORDSYSEARTHPROJECTION8,34,M";
  open("sand");
  EXPECT_TRUE(
      shown("2003\nNoXY: WARNING 0305 - Projection of .mif file is different to that "
            "specified by the MI Projection == command.\nFile \"" +
            folder.path("sand.mif") + "\"; Its projection: CoordSys Earth"))
      << console.output;

  settings.projectionIsError = true;
  folder.write("bare.mif", "Version 300\nData\n");
  EXPECT_THROW(open("bare"), test::ProcessEnded);
  EXPECT_TRUE(
      shown("\n\nNoXY: ERROR 0305 - Projection of .mif file is different to that specified "
            "by the MI Projection == command.\n"
            "Use \"MI Projection Check == WARNING\" to change message to a WARNING.\n"));
  EXPECT_TRUE(shown("It has no CoordSys line."));
}

TEST_F(LayerOpener, LayerAsOldAsItsTableIsFine) {
  settings = {.checkSaveDate = true, .tableExtension = ".tab", .saveDateIsError = true};
  folder.write("SAND.Tab", "");
  for (const int seconds : {0, 5}) {
    save("SAND.Tab", 0);
    save("sand.mid", seconds);
    console.output.clear();
    open("sand");
    EXPECT_TRUE(
        shown("Checking save date is later than that of " + folder.path("sand.tab") + "...OK\n"))
        << console.output;
  }
  std::filesystem::remove(folder.path("SAND.Tab"));
  open("sand");
  EXPECT_FALSE(shown("NOT OK")) << "there is no table to be older than";
}

TEST_F(LayerOpener, OldLayerWarns) {
  makeOld();
  settings.saveDateIsError = false;
  save("sand.mid", 9);

  const LayerUnits layer = open("sand");

  const std::string warning = "WARNING 0004 - Save date of \"" + folder.path("sand.tab") +
                              "\" file is later than that of \"" + folder.path("sand.mid") + "\"\n";
  EXPECT_TRUE(shown("...NOT OK\n" + warning)) << console.output;
  EXPECT_EQ(log(), warning);
  EXPECT_NE(files.find(layer.mif), nullptr);
}

// Someone at the console who does something before each Enter.
struct Modeller final : Console {
  explicit Modeller(std::function<void()> done) : work(std::move(done)) {}
  void line(std::string_view text) override { output.append(text).append("\n"); }
  void open(std::string_view text) override { output += text; }
  bool readLine(std::string&) override {
    work();
    return true;
  }
  std::function<void()> work;
  std::string output;
};

TEST_F(LayerOpener, OldLayerAsAnErrorIsOpenedAgainUntilItIsExported) {
  makeOld();
  int pauses = 0;
  Modeller modeller([&] {
    if (++pauses == 2) save("sand.mid", 20);
  });
  Diagnostics spoken(modeller, module.messages, module.termination);
  MifLayerOpener atConsole(files, spoken, module.termination, workspace, settings);

  const LayerUnits layer =
      atConsole.openInput(folder.path("sand"), LayerFiles::Pair, module.logUnit);

  EXPECT_EQ(pauses, 2);
  EXPECT_THAT(
      modeller.output,
      testing::AllOf(
          testing::HasSubstr("NOT OK\nERROR 0004 - Save date of \""),
          testing::HasSubstr("Re-export mif file and press Enter, or close window.\nChecking")));
  EXPECT_EQ(layer.mif, 2003) << "the files of the first attempts are closed";
  EXPECT_EQ(entries(), entry("sand"));
}

TEST_F(LayerOpener, ExportThatNobodyCanConfirmEndsTheRun) {
  makeOld();
  EXPECT_THROW(open("sand"), test::ProcessEnded);
  EXPECT_TRUE(shown("Standard input has ended, so nobody can answer: Re-export mif file"));
}

TEST_F(LayerOpener, LayerWithoutADateWarnsOrEndsTheRun) {
  SaveDateCheck check(files, module.diagnostics, module.termination);
  LayerUnits layer;
  EXPECT_TRUE(check.run({.layer = "gone.mid", .table = "a.tab", .logUnit = module.logUnit}, layer));
  EXPECT_TRUE(
      shown("Checking save date is later than that of a.tab...NOT OK\n"
            "WARNING 0004 - Could not access save date of \"gone.mid\" to check with "
            "\"a.tab\"\n"))
      << console.output;

  EXPECT_THROW(
      check.run({.layer = "gone.mid", .table = "a.tab", .isError = true, .logUnit = module.logUnit},
                layer),
      test::ProcessEnded);
  EXPECT_TRUE(
      shown("\"a.tab\"\n\nNOTE - If using NIVARO.exe, use CHECK MI SAVE DATE == WARNING or "
            "OFF to suppress check\n\n"));
}

TEST_F(LayerOpener, ThousandthLayerTakesTheLastPlaceWithAWarning) {
  const std::string warning =
      "WARNING 0317 - Exceeded limit of input layers for MI workspace (.wor may not be complete)\n";
  for (int layer = 1; layer < 1000; ++layer) workspace.enter(std::to_string(layer), module.logUnit);
  EXPECT_FALSE(shown("0317"));

  workspace.enter("1000", module.logUnit);
  EXPECT_EQ(console.output, warning);
  workspace.enter("1001", module.logUnit);
  workspace.enter("1000", module.logUnit);  // forgotten for the one after it
  EXPECT_EQ(log(), warning + warning + warning);

  console.output.clear();
  workspace.enter("999", module.logUnit);
  workspace.enter("1000", module.logUnit);
  EXPECT_EQ(console.output, "");
  EXPECT_TRUE(
      entries().ends_with("Open Table \"999\"\nOpen Table \"1000\"\nOpen Table "
                          "\"1001\"\nOpen Table \"1000\"\n"));

  workspace.close();
  workspace.enter("after the last domain", module.logUnit);
  EXPECT_EQ(entries().find("after"), std::string::npos);
}

}  // namespace
}  // namespace nivaro
