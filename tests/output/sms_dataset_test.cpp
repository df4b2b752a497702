#include "output/sms_dataset.hpp"

#include <bit>
#include <cstring>
#include <vector>

#include "support/test_module.hpp"
#include "this_system.hpp"

namespace nivaro {
namespace {

// Takes a dataset apart, number by number.
struct Bytes {
  template <typename T>
  T take() {
    static_assert(std::endian::native == std::endian::little);
    T value{};
    const std::string bytes = text(sizeof value);
    EXPECT_EQ(bytes.size(), sizeof value) << "the file is too short";
    std::memcpy(&value, bytes.data(), bytes.size());
    return value;
  }
  std::int32_t integer() { return take<std::int32_t>(); }
  float real() { return take<float>(); }
  int flag() { return take<std::int8_t>(); }
  std::string text(std::size_t length) {
    const std::string taken = content.substr(0, length);
    content.erase(0, length);
    return taken;
  }

  std::string content;
};

struct Dataset : test::ModuleTest {
  static constexpr int kN = 4;
  static constexpr int kM = 3;
  static constexpr Area kRange{.firstI = 2, .firstJ = 2, .lastI = 3, .lastJ = 2};

  Dataset() { dataset.open(folder.path("run_morDH.dat")); }

  Bytes file() const { return {folder.bytes("run_morDH.dat")}; }

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

  Bytes bytes = file();  // on the disk without closing
  for (const int expected : {3000, 100, 3, 110, 4, 120, 1, 250, 0, 130, 170, 7, 180, 5, 190})
    EXPECT_EQ(bytes.integer(), expected);
  EXPECT_EQ(bytes.text(40), "DELH Bed change (m)                     ");
  EXPECT_EQ(bytes.content, "");
}

TEST_F(Dataset, TwoDomainsShareARecordThatTheLastOnePads) {
  dataset.setSettings({.flagDepthThreshold = 0.0, .numData = 5, .numCells = 6});
  code[5] = 9;    // cell (2, 2) is skipped
  active[6] = 2;  // cell (3, 2): the lowest bit says inactive

  std::vector<double> cell(kN * kM, 0.0);
  std::vector<double> corner(kN * kM, -1.0);
  cell[5] = 0.4;   // (2, 2)
  cell[10] = 0.8;  // (3, 3)
  const std::vector<std::int32_t> pointI{1, 2, 3};
  const std::vector<std::int32_t> pointJ{1, 2, 2};

  dataset.writeFlags({1, 2}, flags(1.5, 0.0, 9), kRange);        // one flag
  dataset.writeFlags({2, 2}, flags(1.5, 0.0, 9), {2, 1, 3, 1});  // two flags, padded to 6
  dataset.writeValues({1, 2}, 3,
                      CornerValues{.cellBedChange = {cell.data(), kN, kM},
                                   .cornerBedChange = {corner.data(), kN, kM},
                                   .pointI = pointI,
                                   .pointJ = pointJ},
                      kRange);
  dataset.writeValues({2, 2}, 1, std::nullopt, kRange);  // one zero, padded to 5
  dataset.writeEnd();

  Bytes bytes = file();
  EXPECT_EQ(bytes.integer(), 200);
  EXPECT_EQ(bytes.flag(), 1);
  EXPECT_EQ(bytes.real(), 1.5F);
  for (const int expected : {0, 1, 1, 0, 0, 0}) EXPECT_EQ(bytes.flag(), expected);
  // A corner is the mean of its four cells: (1, 1) touches (2, 2); (2, 2) touches (2, 2) and
  // (3, 3); (3, 2) touches (3, 3).
  for (const float expected : {0.1F, 0.3F, 0.2F, 0.0F, 0.0F}) EXPECT_EQ(bytes.real(), expected);
  EXPECT_EQ(bytes.integer(), 210);
  EXPECT_EQ(bytes.content, "");
}

TEST_F(Dataset, DepthThresholdIsStrictAndNeedsAnActiveCell) {
  dataset.setSettings({.flagDepthThreshold = 0.75, .numData = 0, .numCells = 4});
  depth1[6] = 0.5000001;                               // (3, 2) just above
  dataset.writeFlags({1, 1}, flags(0, 0, 9), kRange);  // (2, 2) is exactly at it
  active[6] = 0;
  dataset.writeFlags({1, 1}, flags(0, 0, 9), kRange);
  dataset.writeEnd();

  Bytes bytes = file();
  for (const int expected : {1, 0}) {
    bytes.text(4 + 1 + 4);
    EXPECT_EQ(bytes.flag(), 0);
    EXPECT_EQ(bytes.flag(), expected);
    bytes.text(2);
  }
}

TEST_F(Dataset, CellsAreWalkedWithTheSecondIndexInside) {
  dataset.setSettings({.numData = 0, .numCells = 6});
  active.assign(kN * kM, 0);
  active[1 + kN] = -1;  // cell (2, 2): second of the walk (2, 1), (2, 2), (2, 3), (3, 1) ...
  dataset.writeFlags({1, 1}, flags(0, 0, 9), {2, 1, 3, 3});
  dataset.writeEnd();

  Bytes bytes = file();
  bytes.text(9);
  for (const int expected : {0, 1, 0, 0, 0, 0}) EXPECT_EQ(bytes.flag(), expected);
}

// Larger than the blocks in which flags are turned from the order of memory to that of the file.
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

  dataset.writeFlags({2, 3},
                     {.skippedCode = 2,
                      .code = {code.data(), kRows, kColumns},
                      .active = {active.data(), kRows, kColumns},
                      .depthTerm1 = {},
                      .depthTerm2 = {}},
                     {2, 2, kRows, kColumns});
  dataset.writeEnd();

  EXPECT_TRUE(file().text(expected.size()) == expected);
}

TEST_F(Dataset, TimeCodeCombinesTimeAndOffset) {
  dataset.setSettings({.timeCodeSwitch = 1});
  dataset.writeFlags({1, 1}, flags(2.5, 3.0, 1), kRange);  // all cells skipped
  dataset.writeEnd();

  Bytes bytes = file();
  bytes.text(5);
  EXPECT_EQ(bytes.real(), static_cast<float>(300.0025));
}

TEST_F(Dataset, RecordIsOnTheDiskWhenItsLastDomainIsWritten) {
  dataset.setSettings({.numData = 2, .numCells = 2});
  dataset.writeFlags({1, 1}, flags(1, 0, 9), kRange);
  dataset.writeValues({1, 1}, 0, std::nullopt, kRange);

  EXPECT_EQ(folder.bytes("run_morDH.dat").size(), 9U + 2U + 2U * 4U);
}

TEST_F(Dataset, FullDiskEndsTheRunAndNamesTheFile) {
  if (!test::hasFullDisk()) GTEST_SKIP();
  dataset.open(test::kFullDisk);

  EXPECT_THROW(dataset.writeHeader("x"), test::ProcessEnded);
  EXPECT_TRUE(shown("ERROR - Could not write file \"/dev/full\""));
}

TEST_F(Dataset, NothingIsWrittenWithoutAnOpenSlot) {
  test::TestModule fresh;
  fresh.module.dataset.writeHeader("x");
  fresh.module.dataset.writeEnd();
  EXPECT_EQ(fresh.console.output, "");
}

}  // namespace
}  // namespace nivaro
