#include "messages/mif_layer_opener.hpp"

#include <array>
#include <chrono>
#include <filesystem>
#include <regex>

#include "support/test_module.hpp"

namespace nivaro {
namespace {

using testing::HasSubstr;

struct LayerOpener : test::ModuleTest {
  LayerOpener() {
    workspace.open(folder.path("run_mor.wor"), "Run_01");
    folder.write("sand.mif",
                 "VERSION 450\n\tCOORDSYS earth  PROJECTION\t8,33, 'm'\nColumns 1\nData\n");
    folder.write("sand.mid", "1\n");
    console.output.clear();
  }

  LayerUnits open(std::string_view name, LayerFiles kind = LayerFiles::Pair) {
    return opener.openInput(folder.path(name), kind, module.logUnit);
  }

  // Saved `seconds` after a fixed time, a whole second.
  void save(std::string_view name, double seconds) const {
    using namespace std::chrono;
    const auto base =
        floor<std::chrono::seconds>(std::filesystem::last_write_time(folder.path("run.mlf")));
    std::filesystem::last_write_time(folder.path(name),
                                     base + milliseconds(static_cast<int>(1000.0 * seconds)));
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

TEST_F(LayerOpener, ProjectListsEachPairOnceWithTheGeometryOfItsFirstObject) {
  module.gisLayers.openProject(folder.path("run.qgs"));
  const std::array<std::string, 3> layers[] = {{"a", "\n  text\n", "Point"},
                                               {"b", "NONE\nArc 1 2\nPoint 1 2\n", "Line"},
                                               {"c", "\trect 1 2 3 4\n", "Polygon"},
                                               {"empty", "", "Point"}};
  std::string expected;
  for (const auto& [name, objects, geometry] : layers) {
    folder.write(name + ".mif", "Point 0 0\nData\n" + objects);
    folder.write(name + ".mid", "");
    open(name);
    const LayerUnits again = open(name + ".MIF");
    std::string_view first;
    files.find(again.mif)->readRecord(first);
    EXPECT_EQ(first, "Point 0 0") << "the file is rewound";
    expected += geometry + ' ' + folder.path(name + ".mif") + '\n';
  }
  open("sand.mid", LayerFiles::Single);

  const std::string project = folder.read("run.qgs");
  const std::regex entry(" geometry=\"(\\w+)\"[^]*?<datasource>([^<]*)<");
  std::string listed;
  for (std::sregex_iterator found(project.begin(), project.end(), entry), end; found != end;
       ++found)
    listed += found->format("$1 $2\n");
  EXPECT_EQ(listed, expected);
}

TEST_F(LayerOpener, SingleFilesAreLayersOnlyAsMid) {
  folder.write("cells.csv", "");
  EXPECT_EQ(files.find(open("cells.csv", LayerFiles::Single).data)->path(),
            folder.path("cells.csv"));
  EXPECT_EQ(entries(), "");

  EXPECT_EQ(open("sand.MID", LayerFiles::Single).mif, 0);
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
  opener.close(layer);

  EXPECT_EQ(folder.read("check.mid"), "");
  EXPECT_EQ(entries(), "");
  EXPECT_FALSE(shown("Checking"));
}

TEST_F(LayerOpener, SameOrNoProjectionPassesHoweverItIsWritten) {
  settings = {.hostProjection = "COORDSYSEARTHPROJECTION8,33,M   ", .projectionIsError = true};
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
  EXPECT_THAT(console.output,
              HasSubstr("2003\nNoXY: WARNING 0305 - Projection of .mif file is different to that "
                        "specified by the MI Projection == command.\nFile \"" +
                        folder.path("sand.mif") + "\"; Its projection: \tCOORDSYS earth"));

  settings.projectionIsError = true;
  folder.write("bare.mif", "Version 300\nData\n");
  EXPECT_THROW(open("bare"), test::ProcessEnded);
  EXPECT_THAT(
      console.output,
      HasSubstr("\n\nNoXY: ERROR 0305 - Projection of .mif file is different to that "
                "specified by the MI Projection == command.\n"
                "Use \"MI Projection Check == WARNING\" to change message to a WARNING.\n"));
  EXPECT_TRUE(shown("It has no CoordSys line."));
}

TEST_F(LayerOpener, OnlyLayersSavedBeforeTheirTableWarn) {
  settings = {.checkSaveDate = true, .tableExtension = ".tab"};
  folder.write("SAND.Tab", "");
  save("SAND.Tab", 10.9);  // below the second a copy may be older
  const std::string tab = folder.path("sand.tab");
  const std::string checking = "Checking save date is later than that of " + tab + "...";
  const std::string warning = "WARNING 0004 - Save date of \"" + tab +
                              "\" file is later than that of \"" + folder.path("sand.mid") + "\"\n";
  for (const auto& [seconds, word] : {std::pair(15.0, "OK\n"), {10.0, "OK\n"}, {9.9, "NOT OK\n"}}) {
    save("sand.mid", seconds);
    console.output.clear();
    const LayerUnits layer = open("sand");
    EXPECT_TRUE(console.output.ends_with(checking + word + (seconds < 10 ? warning : "")))
        << console.output;
    EXPECT_NE(files.find(layer.mif), nullptr);
  }
  EXPECT_EQ(log(), warning);

  std::filesystem::remove(folder.path("SAND.Tab"));
  open("sand");
  EXPECT_TRUE(console.output.ends_with("...OK\n")) << "there is no table to be older than";
}

TEST_F(LayerOpener, OldLayerAsAnErrorIsOpenedAgainUntilItIsExported) {
  settings = {.checkSaveDate = true, .tableExtension = ".tab", .saveDateIsError = true};
  folder.write("sand.tab", "");
  save("sand.tab", 10);
  save("sand.mid", 0);
  console.answers = {"", "", "left"};
  console.beforeAnswer = [&] {
    if (console.answers.size() == 2) save("sand.mid", 20);
  };

  LayerUnits layer = open("sand");

  EXPECT_EQ(console.answers.size(), 1U);
  EXPECT_TRUE(
      shown("NOT OK\n...Closed File Unit:2003\n...Closed File Unit:2004\nERROR 0004 - Save "));
  EXPECT_TRUE(shown("Re-export mif file and press Enter, or close window.\n\nTrying to open"));
  EXPECT_EQ(layer.mif, 2003) << "the files of the first attempts are closed";
  EXPECT_EQ(entries(), entry("sand"));

  // A question without an answer ends the run, and is not asked again.
  opener.close(layer);
  save("sand.mid", 0);
  console.answers.clear();
  console.beforeAnswer = [&, asked = 0]() mutable {
    if (++asked == 2) save("sand.mid", 20);
  };
  EXPECT_THROW(open("sand"), test::ProcessEnded);
}

TEST_F(LayerOpener, LayerWithoutADateWarnsOrEndsTheRun) {
  SaveDateCheck check(files, module.diagnostics, module.termination);
  LayerUnits layer;
  SaveDateQuestion question{.layer = "gone.mid", .table = "a.tab", .logUnit = module.logUnit};
  EXPECT_TRUE(check.run(question, layer));
  EXPECT_EQ(console.output,
            "Checking save date is later than that of a.tab...NOT OK\n"
            "WARNING 0004 - Could not access save date of \"gone.mid\" to check with \"a.tab\"\n");

  question.isError = true;
  EXPECT_THROW(check.run(question, layer), test::ProcessEnded);
  EXPECT_THAT(console.output,
              HasSubstr("\"a.tab\"\n\nNOTE - If using NIVARO.exe, use CHECK MI SAVE DATE == "
                        "WARNING or OFF to suppress check\n\n"));
}

TEST_F(LayerOpener, ThousandthLayerTakesTheLastPlaceWithAWarning) {
  const std::string warning =
      "WARNING 0317 - Exceeded limit of input layers for MI workspace (.wor may not be complete)\n";
  const auto enter = [&](const char* name) { workspace.enter(name, module.logUnit); };
  for (int layer = 1; layer < 1000; ++layer) enter(std::to_string(layer).c_str());
  EXPECT_EQ(console.output, "");

  enter("1000");
  enter("1001");
  enter("1000");  // forgotten for the one after it
  enter("999");
  enter("1000");
  EXPECT_EQ(console.output, warning + warning + warning);
  EXPECT_EQ(log(), console.output);
  EXPECT_TRUE(
      entries().ends_with("Open Table \"999\"\nOpen Table \"1000\"\n"
                          "Open Table \"1001\"\nOpen Table \"1000\"\n"));

  workspace.close();
  enter("after the last domain");
  EXPECT_EQ(entries().find("after"), std::string::npos);
}

}  // namespace
}  // namespace nivaro
