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

TEST(FieldWriter, EdgesAreWrittenAsByFixedField) {
  using Limits = std::numeric_limits<double>;
  for (const double size : {0.0, 0.4, 0.5, 0.0005, 0.0015, 0.0625, 0.1875, 1.0, 9.9995, 99.9995})
    expectSame(size);
  for (const double size : {999999.9995, 123456789012.3456, 4503599627370495.5, 0x1p52, 0x1p53 - 1,
                            0x1p53, 1e300, 0x1p-10, 0x1p-11, 0x1p-12})
    expectSame(size);
  for (const double size : {Limits::min(), Limits::denorm_min(), Limits::max(), Limits::infinity(),
                            Limits::quiet_NaN()})
    expectSame(size);
}

TEST(FieldWriter, AnyNumberIsWrittenAsByFixedField) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 20000; ++i) {
    // Any bits; sizes that grids have; halves, quarters ... of a thousandth, where ties abound.
    expectSame(std::bit_cast<double>(random()));
    expectSame((static_cast<double>(random() % 2000000000) - 1e9) / 7919.0);
    expectSame(static_cast<double>(random() % 2000000) / 16384.0);
  }
}

TEST(FieldWriter, IntegersAreWrittenAsByIntegerField) {
  using Limits = std::numeric_limits<std::int64_t>;
  for (const std::int64_t value :
       {std::int64_t{0}, std::int64_t{-1}, std::int64_t{999999}, std::int64_t{1000000},
        std::int64_t{-99999}, std::int64_t{-100000}, Limits::max(), Limits::min()}) {
    std::string text;
    appendIntegerField(text, value, 6);
    EXPECT_EQ(text, integerField(value, 6));
    text.clear();
    appendInteger(text, value);
    EXPECT_EQ(text, std::to_string(value));
  }
}

}  // namespace
}  // namespace nivaro
