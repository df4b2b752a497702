#include "platform/field_writer.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>
#include <utility>

#include "platform/fixed_field.hpp"

namespace nivaro {
namespace {

// fixedField is the definition; this is the same, faster. Of either sign.
void expectSame(double size) {
  constexpr std::pair<int, int> formats[] = {{15, 3}, {12, 3}, {10, 3}, {5, 3}, {4, 3},
                                             {10, 6}, {8, 2},  {6, 1},  {6, 0}, {0, 3}};
  for (const double value : {size, -size}) {
    for (const auto& [width, decimals] : formats) {
      std::string text = "before";
      appendFixedField(text, value, width, decimals);
      ASSERT_EQ(text, "before" + fixedField(value, width, decimals))
          << std::hexfloat << value << ' ' << width << '.' << decimals;
    }
  }
}

TEST(FieldWriter, AnyNumberIsWrittenAsByFixedField) {
  using Limits = std::numeric_limits<double>;
  for (const double size : {0.0, 0.4, 0.0005, 0.0015, 0.0625, 99.9995, 999999.9995,
                            4503599627370495.5, 0x1p52, 0x1p53 - 1, 0x1p53, 0x1p-10, 0x1p-11,
                            Limits::denorm_min(), Limits::infinity(), Limits::quiet_NaN()})
    expectSame(size);

  std::mt19937_64 random(7);
  for (int i = 0; i < 20000; ++i) {
    // Any bits; sizes that grids have; halves, quarters ... of a thousandth, where ties abound.
    expectSame(std::bit_cast<double>(random()));
    expectSame((static_cast<double>(random() % 2000000000) - 1e9) / 7919.0);
    expectSame(static_cast<double>(random() % 2000000) / 16384.0);
  }
}

}  // namespace
}  // namespace nivaro
