#include "output/sms_dataset.hpp"

#include <bit>
#include <vector>

#include "support/test_module.hpp"

namespace nivaro {
namespace {

using namespace std::string_literals;

// The bytes of numbers, one behind the other.
template <typename... Numbers>
std::string bytesOf(Numbers... numbers) {
  static_assert(std::endian::native == std::endian::little);
  std::string bytes;
  (bytes.append(reinterpret_cast<const char*>(&numbers), sizeof numbers), ...);
  return bytes;
}

struct Dataset : test::ModuleTest {
  static constexpr int kN = 4;
  static constexpr int kM = 3;
  static constexpr Area kRange{.firstI = 2, .firstJ = 2, .lastI = 3, .lastJ = 2};

  Dataset() { dataset.open(folder.path("run_morDH.dat")); }

  std::string file() const { return folder.bytes("run_morDH.dat"); }

  CellFlags flags(double time, double offset, std::int32_t skippedCode) {
    return {.time = time,
            .timeOffset = offset,
            .skippedCode = skippedCode,
            .code = {code.data(), kN, kM},
            .active = {active.data(), kN, kM},
            .depthTerm1 = {depth1.data(), kN, kM},
            .depthTerm2 = {depth2.data(), kN, kM}};
  }

  SmsDataset& dataset = module.dataset;
  std::vector<std::int32_t> code = std::vector<std::int32_t>(kN * kM, 1);
  std::vector<Logical> active = std::vector<Logical>(kN * kM, -1);
  std::vector<double> depth1 = std::vector<double>(kN * kM, 0.5);
  std::vector<double> depth2 = std::vector<double>(kN * kM, 0.25);
};

TEST_F(Dataset, HeaderHoldsTheCardsInOrder) {
  dataset.setSettings({.numData = 7, .numCells = 5});
  dataset.writeHeader("Bed change (m)");

  // On the disk without closing.
  EXPECT_EQ(file(), bytesOf(3000, 100, 3, 110, 4, 120, 1, 250, 0, 130, 170, 7, 180, 5, 190) +
                        "DELH Bed change (m)                     ");
}

TEST_F(Dataset, TwoDomainsShareARecordThatTheLastOnePads) {
  dataset.setSettings({.flagDepthThreshold = -1.0, .numData = 5, .numCells = 6});
  depth1.assign(kN * kM, -9.0);  // not looked at
  code[5] = 9;                   // cell (2, 2) is skipped
  active[6] = 2;                 // cell (3, 2): the lowest bit says inactive

  std::vector<double> cell(kN * kM, 0.0);
  std::vector<double> corner(kN * kM, -1.0);
  cell[5] = 0.4;   // (2, 2)
  cell[10] = 0.8;  // (3, 3)
  const std::vector<std::int32_t> pointI{1, 2, 3};
  const std::vector<std::int32_t> pointJ{1, 2, 2};

  for (int time = 0; time < 2; ++time) {
    dataset.writeFlags({1, 2}, flags(1.5, 0.0, 9), kRange);        // one flag
    dataset.writeFlags({2, 2}, flags(1.5, 0.0, 9), {2, 1, 3, 1});  // two flags, padded to 6
    dataset.writeValues({1, 2}, 3,
                        CornerValues{.cellBedChange = {cell.data(), kN, kM},
                                     .cornerBedChange = {corner.data(), kN, kM},
                                     .pointI = pointI,
                                     .pointJ = pointJ},
                        kRange);
    dataset.writeValues({2, 2}, 1, std::nullopt, kRange);  // one zero, padded to 5
  }

  // A corner is the mean of its four cells: (1, 1) touches (2, 2); (2, 2) touches (2, 2) and
  // (3, 3); (3, 2) touches (3, 3).
  const std::string whole =
      bytesOf(200, '\1', 1.5F) + "\0\1\1\0\0\0"s + bytesOf(0.1F, 0.3F, 0.2F, 0.0F, 0.0F);
  EXPECT_EQ(file(), whole + whole) << "it is on the disk when its last domain is written";
  dataset.writeEnd();
  EXPECT_EQ(file(), whole + whole + bytesOf(210));
}

TEST_F(Dataset, CornersOfTheRangeAreFilledWhicheverPointsAreWritten) {
  dataset.setSettings({.numData = 2});
  std::vector<double> cell(kN * kM, 0.5);
  std::vector<double> corner(kN * kM, -1.0);
  const std::vector<std::int32_t> pointI{2, 1};
  const std::vector<std::int32_t> pointJ{3, 1};
  for (const std::size_t points : {2U, 0U}) {
    corner.assign(kN * kM, -1.0);
    dataset.writeValues({1, 1}, static_cast<std::int32_t>(points),
                        CornerValues{.cellBedChange = {cell.data(), kN, kM},
                                     .cornerBedChange = {corner.data(), kN, kM},
                                     .pointI = std::span(pointI).first(points),
                                     .pointJ = std::span(pointJ).first(points)},
                        kRange);
    // The range and the cells just before it: (1, 1) to (3, 2).
    EXPECT_EQ(corner,
              (std::vector{0.5, 0.5, 0.5, -1.0, 0.5, 0.5, 0.5, -1.0, -1.0, -1.0, -1.0, -1.0}));
  }
  // Point (2, 3) lies outside and holds what the host left there.
  EXPECT_EQ(file(), bytesOf(-1.0F, 0.5F, 0.0F, 0.0F));
}

TEST_F(Dataset, DepthThresholdIsStrictAndNeedsAnActiveCell) {
  dataset.setSettings({.flagDepthThreshold = 0.75, .numData = 0, .numCells = 4});
  depth1[6] = 0.5000001;                               // (3, 2) just above
  dataset.writeFlags({1, 1}, flags(0, 0, 9), kRange);  // (2, 2) is exactly at it
  active[6] = 0;
  dataset.writeFlags({1, 1}, flags(0, 0, 9), kRange);
  dataset.writeEnd();

  const std::string card = bytesOf(200, '\1', 0.0F);
  EXPECT_EQ(file(), card + "\0\1\0\0"s + card + "\0\0\0\0"s + bytesOf(210));
}

// Larger than the blocks in which flags are turned from the order of memory to that of the file: a strip
// and a single row, then less than a strip.
TEST_F(Dataset, FlagsOfManyRowsAndColumnsKeepTheirPlaces) {
  constexpr int kRows = FlagStrip::kRows + 77;
  constexpr int kColumns = 150;
  code.resize(kRows * kColumns);
  active.resize(kRows * kColumns);
  std::string expected;
  for (int i = 1; i <= kRows; ++i) {
    for (int j = 1; j <= kColumns; ++j) {
      const auto k = static_cast<std::size_t>((j - 1) * kRows + i - 1);
      code[k] = (i + j) % 5;
      active[k] = i * j % 3 - 1;  // -1, 0 or 1, of which the lowest bit counts
      if (i > 1 && j > 1 && code[k] != 2) expected += static_cast<char>(active[k] != 0);
    }
  }

  const CellFlags flags{.skippedCode = 2,
                        .code = {code.data(), kRows, kColumns},
                        .active = {active.data(), kRows, kColumns},
                        .depthTerm1 = {},
                        .depthTerm2 = {}};
  constexpr int kSecond = 2 + FlagStrip::kRows + 1;
  dataset.writeFlags({2, 3}, flags, {2, 2, kSecond - 1, kColumns});
  dataset.writeFlags({2, 3}, flags, {kSecond, 2, kRows, kColumns});
  dataset.writeEnd();

  EXPECT_TRUE(file() == expected + bytesOf(210));
}

TEST_F(Dataset, TimeCodeCombinesTimeAndOffset) {
  dataset.setSettings({.timeCodeSwitch = 1});
  dataset.writeFlags({1, 1}, flags(2.5, 3.0, 1), kRange);  // all cells skipped
  dataset.writeEnd();
  EXPECT_EQ(file(), bytesOf(200, '\1', static_cast<float>(300.0025), 210));
}

}  // namespace
}  // namespace nivaro
