// Times of reading: layers object by object, cell tables row by row, and whole commands.
#include <benchmark/benchmark.h>

#include <charconv>

#include "control/cell_table.hpp"
#include "inputs.hpp"
#include "model.hpp"
#include "spatial/plane.hpp"
#include "spatial/region_fill.hpp"
#include "support/temp_folder.hpp"

namespace nivaro::bench {
namespace {

constexpr int kRegions = 20000;
constexpr int kLayerCells = 2000;  // along either index, as for the two below
constexpr int kTableCells = 1000;
constexpr int kStartCells = 100;

// Everything that is read; the control files name layer and table.
class Inputs {
 public:
  Inputs() {
    writeRegionLayer(path("regions"), kRegions, kLayerCells);
    writeCellTable(path("cells.mid"), kTableCells);
    save(path("layer.mcf"), "Read MI Morphology D50 == regions.mif\n");
    save(path("table.mcf"), "Read MID Morphology Bed Limit == cells.mid\n");
    save(path("plain.mcf"),
         "Set Morphology D50 == 0.0002\n"
         "Set Morphology D90 == 0.0003\n"
         "Morphology Fall Velocity == 0.02      ! m/s\n"
         "Morphology Reference Level == 0.025   ! m above the bed\n"
         "Morphology Concentration Factor == 1.0\n");
  }
  std::string path(std::string_view name) const { return folder_.path(name); }

 private:
  test::TempFolder folder_;
};

const Inputs& inputs() {
  static const Inputs inputs;
  return inputs;
}

// A whole control file of one command by a started module.
void readControlFile(benchmark::State& state, int cells, const char* controlFile) {
  QuietConsole console;
  Model model(cells, inputs().path("run"), console);
  model.start();
  const std::string path = inputs().path(controlFile);
  for (auto _ : state) model.readControlFile(path);
}

// From nothing to a read control file.
void startUp(benchmark::State& state) {
  QuietConsole console;
  Model model(kStartCells, inputs().path("run"), console);
  const std::string path = inputs().path("plain.mcf");
  for (auto _ : state) {
    model.start();
    model.readControlFile(path);
  }
}

void openToRead(Unit& unit, std::string_view name) {
  unit.open(inputs().path(name),
            {.status = OpenOptions::Status::Old, .action = OpenOptions::Action::Read});
}

// Calls use(reader, mif) for every region of the layer.
template <typename Use>
void forEachRegion(Use use) {
  QuietConsole console;
  RealProcess process;
  const auto record = std::make_unique<MessageRecord>();
  Module module(console, process, *record);
  Unit mif;
  Unit mid;
  openToRead(mif, "regions.mif");
  openToRead(mid, "regions.mid");
  module.layers.findObjectSection(mif);
  while (module.layers.objectsLeft(mif, mid))
    if (module.layers.nextObject(mif, mid) != nullptr && module.layers.readSection(mif))
      use(module.layers);
}

void readObjects(benchmark::State& state) {
  for (auto _ : state)
    forEachRegion([](const MifReader& reader) { benchmark::DoNotOptimize(reader.x().data()); });
}

struct Region {
  std::vector<double> x, y;
  std::vector<std::int32_t> ends;
};

void fillRegions(benchmark::State& state) {
  std::vector<Region> regions;
  const GridFrame frame{.x0 = kOriginX,
                        .y0 = kOriginY,
                        .dx = kCellSize,
                        .dy = kCellSize,
                        .firstBound = kLayerCells,
                        .secondBound = kLayerCells};
  forEachRegion([&](const MifReader& reader) {
    Region& region = regions.emplace_back();
    region.ends.assign(reader.polygonEnds().begin(), reader.polygonEnds().end());
    region.x.resize(reader.x().size());
    region.y.resize(reader.y().size());
    geoShift(reader.x(), reader.y(), frame.x0, frame.y0, frame.angle, region.x, region.y);
  });
  RegionFill fill;
  std::vector<double> x, y;
  for (auto _ : state) {
    for (const Region& region : regions) {
      x = region.x;
      y = region.y;
      const auto cells = fill.find(x, y, region.ends, frame, kLayerCells + 4, kLayerCells + 4);
      benchmark::DoNotOptimize(cells.value().inside.data());
    }
  }
}

void readRows(benchmark::State& state) {
  for (auto _ : state) {
    Unit table;
    openToRead(table, "cells.mid");
    std::string_view text;
    CellRow row;
    while (readRow(table, text) == ReadStatus::Ok) {
      readCellRow(text, row);
      benchmark::DoNotOptimize(row);
    }
  }
}

// The least that reading the table can cost: its numbers, from memory, with nothing asked about
// what stands between them.
void parseNumbers(benchmark::State& state) {
  const std::string text = textOf(inputs().path("cells.mid"));
  const char* const end = text.data() + text.size();
  for (auto _ : state) {
    CellRow row;
    for (const char* at = text.data(); at != end; ++at) {
      at = std::from_chars(at, end, row.first).ptr + 1;
      at = std::from_chars(at, end, row.second).ptr + 1;
      at = std::from_chars(at, end, row.value).ptr;
      benchmark::DoNotOptimize(row);
    }
  }
}

constexpr auto kUnit = benchmark::kMillisecond;

BENCHMARK_CAPTURE(readControlFile, layer, kLayerCells, "layer.mcf")->Unit(kUnit);
BENCHMARK_CAPTURE(readControlFile, layer_grid_only, kLayerCells, "plain.mcf")->Unit(kUnit);
BENCHMARK(readObjects)->Unit(kUnit);
BENCHMARK(fillRegions)->Unit(kUnit);
BENCHMARK(parseNumbers)->Unit(kUnit);
BENCHMARK_CAPTURE(readControlFile, table, kTableCells, "table.mcf")->Unit(kUnit);
BENCHMARK_CAPTURE(readControlFile, table_grid_only, kTableCells, "plain.mcf")->Unit(kUnit);
BENCHMARK(readRows)->Unit(kUnit);
BENCHMARK(startUp)->Unit(kUnit);

}  // namespace
}  // namespace nivaro::bench

BENCHMARK_MAIN();
