// The example host as its user meets it: a program with exit codes, loading the built module.
#include <gmock/gmock.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>

#include "support/temp_folder.hpp"

namespace {

using nivaro::test::TempFolder;
using testing::HasSubstr;
using testing::Not;

// A short reach with a step in its bed, along x or along y, with its control file in a folder "my case".
void writeCase(const TempFolder& folder, const std::string& control, bool isAcross = false) {
  const std::string direction = isAcross ? R"(
grid = { columns = 3, rows = 12, cell_size = 1.0, origin = [50.0, 100.0] }
boundary = { south = { discharge = 1.8 }, north = { level = 1.0 } }
initial = { level = 1.0, discharge = [0.0, 0.6] }
bed = { level = 0.0, profile = [{ along = "y", depths = [[104, 0.0], [107, 0.3]] }] })"
                                         : R"(
grid = { columns = 12, rows = 3, cell_size = 1.0, origin = [100.0, 50.0] }
boundary = { west = { discharge = 1.8 }, east = { level = 1.0 } }
initial = { level = 1.0, discharge = [0.6, 0.0] }
bed = { level = 0.0, profile = [{ depths = [[104, 0.0], [107, 0.3]] }] })";
  std::filesystem::create_directory(folder.path("my case"));
  folder.write("my case/case.toml", "name = \"reach\"" + direction + R"(
roughness = { height = 0.03 }
time = { duration_h = 0.5, morphology_step_s = 10, acceleration = 20, spin_up_s = 60, output_h = [0.2] }
morphology = { control_file = "sand.mcf" }
)");
  folder.write("my case/sand.mcf", control);
}

constexpr const char* kSand = R"(Morphology Fall Velocity == 0.013
Morphology Current Related Roughness == 0.03
Morphology Reference Level == 0.015
Morphology Mixing Layer Thickness == 0.015
)";

// Exit code of the host; what it said is in the file "said". Standard input is at its end.
int run(const TempFolder& folder, const std::string& arguments) {
  const std::string command =
      "cd '" + folder.path("") + "' && '" HOST_PROGRAM "' " + arguments + " >said 2>&1 </dev/null";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::size_t linesBeginning(const std::string& text, const std::string& word) {
  std::size_t count = 0;
  for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
    ++count;
  return count;
}

TEST(HostRun, WritesADatasetThatFitsItsMesh) {
  const TempFolder folder;
  writeCase(folder, kSand);
  ASSERT_EQ(run(folder, "'my case' --library '" MODULE_LIBRARY "' --out 'new folder/out'"), 0)
      << folder.read("said");

  const std::string mesh = folder.read("new folder/out/reach.2dm");
  const std::string dataset = folder.bytes("new folder/out/reach_morDH.dat");
  const std::size_t elements = linesBeginning(mesh, "E4Q ");
  const std::size_t nodes = linesBeginning(mesh, "ND ");
  EXPECT_EQ(elements, 12u * 3u);
  EXPECT_EQ(nodes, 13u * 4u);
  // Header: fifteen 4-byte numbers and 40 characters. Three records (0, 0.2 and 0.5 h), each a
  // card, a status byte, the time, a byte per element, a 4-byte value per node. The end card.
  ASSERT_EQ(dataset.size(), 15 * 4 + 40 + 3 * (4 + 1 + 4 + elements + 4 * nodes) + 4);
  float lastTime = 0;
  std::memcpy(&lastTime, dataset.data() + dataset.size() - 4 - 4 * nodes - elements - 4, 4);
  EXPECT_EQ(lastTime, 0.5f);

  // No drop of water is lost, and no grain between what the module says of its steps and the bed.
  const std::string summary = folder.read("new folder/out/reach_summary.csv");
  for (const std::string row : {"\nunexplained,", "\nwater_error,"})
    EXPECT_NEAR(std::stod(summary.substr(summary.find(row) + row.size())), 0, 1e-9) << row;
  EXPECT_THAT(folder.read("said"), HasSubstr("reach_bed_change.csv"));
  EXPECT_THAT(folder.read("said"), Not(HasSubstr("\r")));
  EXPECT_THAT(folder.read("new folder/out/reach.mlf"), HasSubstr("Morphology Fall Velocity == "));
  // One line per cell and record below the names of the columns, at the cell's centre.
  const std::string change = folder.read("new folder/out/reach_bed_change.csv");
  EXPECT_EQ(std::count(change.begin(), change.end(), '\n'), 1 + 3 * 36);
  EXPECT_THAT(change, HasSubstr("\n0.5000,111.5000,52.5000,"));
}

// Change of the bed by time, distance along the reach and across it.
std::map<std::array<double, 3>, double> bedChanges(const TempFolder& folder, bool isAcross) {
  std::string table = folder.read("out/reach_bed_change.csv");
  std::replace(table.begin(), table.end(), ',', ' ');
  std::istringstream rows(table.substr(table.find('\n')));
  std::map<std::array<double, 3>, double> changes;
  for (double time, x, y, bed, change, depth, speed;
       rows >> time >> x >> y >> bed >> change >> depth >> speed;)
    changes[{time, isAcross ? y : x, isAcross ? x : y}] = change;
  return changes;
}

TEST(HostRun, AReachAlongTheOtherAxisGetsTheSameBed) {
  const TempFolder folders[2];
  for (const bool isAcross : {false, true}) {
    const TempFolder& folder = folders[isAcross];
    writeCase(folder, kSand, isAcross);
    ASSERT_EQ(run(folder, "'my case' --library '" MODULE_LIBRARY "' --out out"), 0);
  }
  const auto along = bedChanges(folders[0], false), across = bedChanges(folders[1], true);
  ASSERT_EQ(along.size(), 3 * 36u);
  double largest = 0;
  for (const auto& [place, change] : along) {
    ASSERT_TRUE(across.contains(place)) << place[0] << ' ' << place[1] << ' ' << place[2];
    EXPECT_NEAR(across.at(place), change, 1.5e-6);  // of six decimals
    largest = std::max(largest, std::abs(change));
  }
  EXPECT_GT(largest, 0.001);
}

// A basin of 80 m by 100 m beside a river, in which an eddy turns and sand settles: what a run erodes and
// deposits belongs to the case, not to its steps.
TEST(HostRun, HalvedStepsLeaveAHarbourItsSand) {
  const TempFolder folder;
  writeCase(folder, kSand);
  std::map<std::string, double> first;
  for (const auto& [courant, step] : {std::pair{0.7, 60}, {0.35, 60}, {0.7, 30}}) {
    folder.write("my case/case.toml", R"(name = "reach"
grid = { columns = 40, rows = 20, cell_size = 10.0 }
boundary = { west = { discharge = 300 }, east = { level = 3.0 } }
initial = { level = 3.0 }
roughness = { manning = 0.025 }
bed = { level = 0.0, box = [{ x = [0, 150], y = [100, 200], height = 9 },
                            { x = [230, 400], y = [100, 200], height = 9 }] }
time = { duration_h = 3, acceleration = 60, spin_up_s = 3600, output_h = [3], morphology_step_s = )" +
                                          std::to_string(step) +
                                          " }\nflow.courant = " + std::to_string(courant) +
                                          "\nmorphology.control_file = 'sand.mcf'\n");
    ASSERT_EQ(run(folder, "'my case' --library '" MODULE_LIBRARY "' --out out"), 0);
    const std::string summary = folder.read("out/reach_summary.csv");
    for (const std::string row : {"\neroded,", "\ndeposited,"}) {
      const double volume = std::stod(summary.substr(summary.find(row) + row.size()));
      EXPECT_GT(volume, 5) << row;
      first.try_emplace(row, volume);
      EXPECT_NEAR(volume, first[row], 0.01 * volume) << row << courant << ' ' << step;
    }
  }
}

TEST(HostRun, SaysWhyItCannotGoOnAndEndsWithACodeForIt) {
  const TempFolder folder;
  writeCase(folder, "Morphology Fall Velocity == fast\n");
  folder.write("file", "");
  folder.write("unset.mcf", "");
  const std::string library = " --library '" MODULE_LIBRARY "'";
  const struct {
    std::string arguments;
    int code;
    const char* said;
  } cases[] = {
      {"--help", 0, "Exit code"},
      {"", 2, "CASE_FOLDER"},
      {"nowhere", 2, "nowhere: there is no such folder."},
      {"'my case' --step 0", 2, "--step"},
      {"'my case' --library missing.so", 3, "missing.so cannot be loaded"},
      {"'my case' --library libm.so.6", 3, "it lacks QVMOR_INITIALISE_S1"},
      {"'my case' --out file/out" + library, 4, "file/out cannot be created"},
      {"'my case' --control unset.mcf" + library, 5, "no number any more"},
      {"'my case'" + library, 1, "the morphology module ended the run"},
  };
  for (const auto& [arguments, code, said] : cases) {
    EXPECT_EQ(run(folder, arguments), code) << arguments;
    EXPECT_THAT(folder.read("said"), HasSubstr(said)) << arguments;
  }
}

// The grid above turned by a quarter: its x runs to the map's north, its y to the west. A layer of
// one square covers the cells (2, 3) and (2, 4), row before column.
TEST(HostRun, LayersLieOnTheTurnedGrid) {
  const TempFolder folder;
  writeCase(folder, kSand);
  const std::string coordSys = "CoordSys Earth Projection 8, 104, \"m\", 9, 0, 0.9996, 500000, 0";
  folder.write("my case/case.toml", folder.read("my case/case.toml") + "[map]\n" +
                                        "origin = [5000, 7000]\nangle = 90\ncoord_sys = '" +
                                        coordSys + "'\n[messages]\nlabel_height = 1\n" +
                                        "label_width = 10\nspacing = 2\n");
  folder.write("my case/sand.mcf", std::string(kSand) + "Read MI Morphology D50 == coarse\n");
  folder.write("my case/coarse.mif", "Version 300\nDelimiter \",\"\n" + coordSys +
                                         "\nColumns 1\n  Value Float\nData\n\nRegion 1\n5\n"
                                         "4999 7002\n4999 7004\n4998 7004\n4998 7002\n4999 7002\n");
  folder.write("my case/coarse.mid", "0.0005\n");
  ASSERT_EQ(run(folder, "'my case' --library '" MODULE_LIBRARY "' --out out"), 0)
      << folder.read("said");

  EXPECT_THAT(folder.read("said"), Not(HasSubstr("WARNING 0305")));  // the layer's projection
  const std::string cells = folder.read("out/reach_mor_check.mid");
  EXPECT_EQ(std::count(cells.begin(), cells.end(), '\n'), 36);
  EXPECT_EQ(linesBeginning(cells, "0.000500,"), 2u);
  EXPECT_THAT(cells, HasSubstr("\"2,3\",1,"));
  // Its last corner is its first: one cell up and right of the lower left one, seen along the grid.
  EXPECT_THAT(folder.read("out/reach_mor_check.mif"), HasSubstr(coordSys + "\nColumns 12\n"));
  EXPECT_THAT(folder.read("out/reach_mor_check.mif"),
              HasSubstr("       4999.000       7001.000\n"));
  EXPECT_THAT(folder.read("out/reach.2dm"), HasSubstr("ND 1 5000.0000 7000.0000 "));
  EXPECT_THAT(folder.read("out/reach_messages.mid"),
              HasSubstr("\"CHECK - Check layer and messages of reach  Log "));
}

TEST(HostRun, TheBundledCasesReadWell) {
  const TempFolder folder;
  EXPECT_EQ(run(folder, "'" TRENCH_CASE "' --check"), 0);
  EXPECT_THAT(folder.read("said"), HasSubstr("Case trench: 220 x 5 cells"));
  EXPECT_EQ(run(folder, "'" REACH_CASE "' --check"), 0);
  EXPECT_THAT(folder.read("said"), HasSubstr("Case reach: 200 x 100 cells"));
}

}  // namespace
