#include "messages/mif_layer_opener.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

#include "support/temp_folder.hpp"
#include "support/test_process.hpp"

namespace nivaro {
namespace {

constexpr const char* kHeader =
    "Version 300\nCoordSys Earth Projection 8, 33, \"m\"\nColumns 1\n  v Float\nData\n\n";

// Someone at the console who does something before each Enter.
class Modeller final : public Console {
 public:
  explicit Modeller(std::function<void()> work) : work_(std::move(work)) {}
  void line(std::string_view text) override { output.append(text).append("\n"); }
  void open(std::string_view text) override { output += text; }
  bool readLine(std::string&) override {
    work_();
    return true;
  }

  std::string output;

 private:
  std::function<void()> work_;
};

class LayerOpener : public testing::Test {
 protected:
  void SetUp() override {
    files.initFileUnits(2000);
    log = files.openFile(folder.path("run.mlf"), "O ", 1);
    workspace.open(folder.path("run_mor.wor"), "Run_01");
    writeLayer("sand");
    console.output.clear();
  }

  void writeLayer(const std::string& name) const {
    folder.write(name + ".mif", kHeader);
    folder.write(name + ".mid", "1\n");
  }

  LayerUnits open(std::string_view name, LayerFiles kind = LayerFiles::Pair) {
    return opener.openInput(folder.path(name), kind, log);
  }

  // Saved `seconds` after a fixed time.
  void save(std::string_view name, int seconds) const {
    const auto base = std::filesystem::last_write_time(folder.path("run.mlf"));
    std::filesystem::last_write_time(folder.path(name), base + std::chrono::seconds(seconds));
  }

  bool shown(std::string_view text) const { return console.output.find(text) != std::string::npos; }

  std::string entries() const {
    const std::string text = folder.read("run_mor.wor");
    return text.substr(std::min(text.find("Open Table"), text.size()));
  }

  std::string entry(std::string_view name) const {
    return "Open Table \"" + folder.path(name) + "\"\n";
  }

  test::ScriptedConsole console;
  test::RecordingProcess process;
  std::unique_ptr<MessageRecord> record = std::make_unique<MessageRecord>();
  UnitTable units;
  Termination termination{console, process};
  FileUnits files{console, process, units, termination};
  MessageWriter messages{console, units, *record};
  Diagnostics diagnostics{console, messages, termination};
  WorkspaceList workspace{files, diagnostics};
  GisSettings settings;
  MifLayerOpener opener{files, diagnostics, termination, workspace, settings};
  test::TempFolder folder;
  std::int32_t log = 0;
};

TEST_F(LayerOpener, EitherFileOrNoExtensionNamesThePairWhichIsEnteredOnce) {
  for (const char* name : {"sand.MIF", "sand.mid", "sand", "  sand.Mid"}) {
    LayerUnits layer = opener.openInput(
        std::string(name).replace(std::string(name).find("sand"), 0, folder.path("")),
        LayerFiles::Pair, log);
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

TEST_F(LayerOpener, SameProjectionPassesHoweverItIsWritten) {
  settings = {.hostProjection = "COORDSYSEARTHPROJECTION8,33,M   ", .projectionIsError = true};
  folder.write("sand.mif",
               "VERSION 450\n\tCOORDSYS earth  PROJECTION\t8,33, 'm'\nColumns 1\nData\n");

  const LayerUnits layer = open("sand");

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

TEST_F(LayerOpener, BlankHostProjectionAsksNothing) {
  settings = {.hostProjection = " \t  ", .projectionIsError = true};
  open("sand");
  EXPECT_FALSE(shown("0305"));
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
  settings = {.checkSaveDate = true, .tableExtension = ".tab"};
  folder.write("sand.tab", "");
  save("sand.tab", 10);
  save("sand.mid", 9);

  const LayerUnits layer = open("sand");

  const std::string warning = "WARNING 0004 - Save date of \"" + folder.path("sand.tab") +
                              "\" file is later than that of \"" + folder.path("sand.mid") + "\"\n";
  EXPECT_TRUE(shown("...NOT OK\n" + warning)) << console.output;
  EXPECT_EQ(folder.read("run.mlf"), warning);
  EXPECT_NE(files.find(layer.mif), nullptr);
}

TEST_F(LayerOpener, OldLayerAsAnErrorIsOpenedAgainUntilItIsExported) {
  settings = {.checkSaveDate = true, .tableExtension = ".tab", .saveDateIsError = true};
  folder.write("sand.tab", "");
  save("sand.tab", 10);
  save("sand.mid", 0);
  int pauses = 0;
  Modeller modeller([&] {
    if (++pauses == 2) save("sand.mid", 20);
  });
  Diagnostics spoken(modeller, messages, termination);
  MifLayerOpener atConsole(files, spoken, termination, workspace, settings);

  const LayerUnits layer = atConsole.openInput(folder.path("sand"), LayerFiles::Pair, log);

  EXPECT_EQ(pauses, 2);
  EXPECT_NE(modeller.output.find("NOT OK\nERROR 0004 - Save date of \""), std::string::npos);
  EXPECT_NE(modeller.output.find("Re-export mif file and press Enter, or close window.\nChecking"),
            std::string::npos)
      << modeller.output;
  EXPECT_EQ(layer.mif, 2003) << "the files of the first attempts are closed";
  EXPECT_EQ(entries(), entry("sand"));
}

TEST_F(LayerOpener, ExportThatNobodyCanConfirmEndsTheRun) {
  settings = {.checkSaveDate = true, .tableExtension = ".tab", .saveDateIsError = true};
  folder.write("sand.tab", "");
  save("sand.tab", 10);
  save("sand.mid", 0);

  EXPECT_THROW(open("sand"), test::ProcessEnded);
  EXPECT_TRUE(shown("Standard input has ended, so nobody can answer: Re-export mif file"));
}

TEST_F(LayerOpener, LayerWithoutADateWarnsOrEndsTheRun) {
  SaveDateCheck check(files, diagnostics, termination);
  LayerUnits layer;
  EXPECT_TRUE(check.run({.layer = "gone.mid", .table = "a.tab", .logUnit = log}, layer));
  EXPECT_TRUE(
      shown("Checking save date is later than that of a.tab...NOT OK\n"
            "WARNING 0004 - Could not access save date of \"gone.mid\" to check with "
            "\"a.tab\"\n"))
      << console.output;

  EXPECT_THROW(
      check.run({.layer = "gone.mid", .table = "a.tab", .isError = true, .logUnit = log}, layer),
      test::ProcessEnded);
  EXPECT_TRUE(
      shown("\"a.tab\"\n\nNOTE - If using NIVARO.exe, use CHECK MI SAVE DATE == WARNING or "
            "OFF to suppress check\n\n"));
}

TEST_F(LayerOpener, ThousandthLayerTakesTheLastPlaceWithAWarning) {
  const std::string warning =
      "WARNING 0317 - Exceeded limit of input layers for MI workspace (.wor may not be complete)\n";
  for (int layer = 1; layer < 1000; ++layer) workspace.enter(std::to_string(layer), log);
  EXPECT_FALSE(shown("0317"));

  workspace.enter("1000", log);
  EXPECT_EQ(console.output, warning);
  workspace.enter("1001", log);
  workspace.enter("1000", log);  // forgotten for the one after it
  EXPECT_EQ(folder.read("run.mlf"), warning + warning + warning);

  console.output.clear();
  workspace.enter("999", log);
  workspace.enter("1000", log);
  EXPECT_EQ(console.output, "");
  EXPECT_TRUE(
      entries().ends_with("Open Table \"999\"\nOpen Table \"1000\"\nOpen Table "
                          "\"1001\"\nOpen Table \"1000\"\n"));

  workspace.close();
  workspace.enter("after the last domain", log);
  EXPECT_EQ(entries().find("after"), std::string::npos);
}

}  // namespace
}  // namespace nivaro
