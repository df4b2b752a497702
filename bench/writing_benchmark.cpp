// Times of writing: numbers as text, a time record of the dataset and the same bytes written
// plainly, the check layer.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <numeric>

#include "inputs.hpp"
#include "model.hpp"
#include "platform/field_writer.hpp"
#include "platform/native_file.hpp"
#include "support/temp_folder.hpp"

namespace nivaro::bench {
namespace {

constexpr int kCells = 2000;  // along either index
constexpr std::size_t kNumbers = 4096;

// Card, status and time; a flag for every cell, a real for every corner.
constexpr std::size_t kRecordBytes = 9 + kCells * kCells + 4 * (kCells + 1) * (kCells + 1);

std::vector<double> coordinates() {
  std::vector<double> values(kNumbers);
  for (std::size_t k = 0; k < kNumbers; ++k)
    values[k] = kOriginX + static_cast<double>(k) * kCellSize / 7.0;
  return values;
}

// Per number: a column of the check layer, and what the standard library takes for its digits.
void formatField(benchmark::State& state) {
  const std::vector<double> values = coordinates();
  std::string text;
  for (auto _ : state) {
    text.clear();
    for (const double value : values) appendFixedField(text, value, 15, 3);
    benchmark::DoNotOptimize(text.data());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kNumbers));
}

void formatToChars(benchmark::State& state) {
  const std::vector<double> values = coordinates();
  std::array<char, 32> buffer;
  for (auto _ : state)
    for (const double value : values)
      benchmark::DoNotOptimize(std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                             std::chars_format::fixed, 3));
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kNumbers));
}

// The file is emptied between two records, so that each finds the disk as the first did.
void empty(benchmark::State& state, const std::string& path) {
  state.PauseTiming();
  std::filesystem::resize_file(path, 0);
  state.ResumeTiming();
}

void writeRecord(benchmark::State& state, Model::PointOrder order) {
  const test::TempFolder folder;
  QuietConsole console;
  Model model(kCells, folder.path("run"), console);
  model.fillCells(order);
  model.start();
  for (auto _ : state) {
    model.writeTimeRecord();
    empty(state, model.datasetPath());
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kRecordBytes));
}

// What no time record can do without: one look at the host's arrays that it is made of, the corners
// filled and read, and its bytes handed over.
void writePlainly(benchmark::State& state, bool lookAtArrays) {
  constexpr std::size_t kBytesPerCell = 3 * sizeof(double) + 4 * sizeof(std::int32_t);
  const test::TempFolder folder;
  const std::string bytes(kRecordBytes, 'x');
  const std::vector<std::uint64_t> arrays(std::size_t{kCells} * kCells * kBytesPerCell / 8, 1);
  std::vector<double> corners(std::size_t{kCells} * kCells);
  const std::string path = folder.path("plain.dat");
  NativeFile file;
  file.open(path, {.status = OpenOptions::Status::Replace, .action = OpenOptions::Action::Write});
  for (auto _ : state) {
    if (lookAtArrays) {
      const auto sum = std::reduce(arrays.begin(), arrays.end());
      std::ranges::fill(corners, static_cast<double>(sum));
      benchmark::DoNotOptimize(corners.data());
      benchmark::ClobberMemory();
      benchmark::DoNotOptimize(*std::ranges::max_element(corners));
    }
    file.write(bytes);
    empty(state, path);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kRecordBytes));
}

void writeCheckLayer(benchmark::State& state) {
  const test::TempFolder folder;
  save(folder.path("plain.mcf"), "");
  QuietConsole console;
  Model model(kCells, folder.path("run"), console);
  model.fillCells(Model::PointOrder::AlongFirstIndex);
  model.start();
  model.readControlFile(folder.path("plain.mcf"));
  for (auto _ : state) model.writeCheckLayer();
}

constexpr auto kUnit = benchmark::kMillisecond;

BENCHMARK(formatField);
BENCHMARK(formatToChars);
BENCHMARK_CAPTURE(writePlainly, bytes, false)->Unit(kUnit);
BENCHMARK_CAPTURE(writePlainly, arrays_and_bytes, true)->Unit(kUnit);
BENCHMARK_CAPTURE(writeRecord, points_along_first, Model::PointOrder::AlongFirstIndex)->Unit(kUnit);
BENCHMARK_CAPTURE(writeRecord, points_along_second, Model::PointOrder::AlongSecondIndex)
    ->Unit(kUnit);
BENCHMARK(writeCheckLayer)->Unit(kUnit);

}  // namespace
}  // namespace nivaro::bench

BENCHMARK_MAIN();
