#include "output/sms_dataset.hpp"

#include <vector>

#include "support/test_module.hpp"

namespace nivaro {
namespace {

using Dataset = test::ModuleTest;

// Larger than the blocks in which flags are turned from the order of memory to that of the file: a strip
// and a single row, then less than a strip.
TEST_F(Dataset, FlagsOfManyRowsAndColumnsKeepTheirPlaces) {
  constexpr int kRows = FlagStrip::kRows + 77;
  constexpr int kColumns = 150;
  std::vector<std::int32_t> code(kRows * kColumns);
  std::vector<Logical> active(kRows * kColumns);
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
  SmsDataset& dataset = module.dataset;
  dataset.open(folder.path("run_morDH.dat"));
  constexpr int kSecond = 2 + FlagStrip::kRows + 1;
  dataset.writeFlags({2, 3}, flags, {2, 2, kSecond - 1, kColumns});
  dataset.writeFlags({2, 3}, flags, {kSecond, 2, kRows, kColumns});
  dataset.writeEnd();

  constexpr std::int32_t kEnd = 210;
  expected.append(reinterpret_cast<const char*>(&kEnd), sizeof kEnd);
  EXPECT_TRUE(folder.bytes("run_morDH.dat") == expected);
}

}  // namespace
}  // namespace nivaro
