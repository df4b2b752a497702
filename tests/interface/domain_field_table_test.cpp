#include "interface/domain_field_table.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace nivaro {
namespace {

TEST(DomainFieldTable, DomainGetsTwelveRealStretchesInOrderAndAnIntegerOne) {
  DomainFieldTable table;
  std::int32_t nextReal = 3;
  std::int32_t nextInteger = 2;
  table.reserve(100, true, 2, 3, nextReal, nextInteger);
  EXPECT_EQ(nextReal, 3 + 12 * 6);
  EXPECT_EQ(nextInteger, 2 + 6);
  std::vector<double> real(80);
  std::vector<std::int32_t> integer(20);

  const SedimentFields fields = table.fields(100, {real.data(), integer.data()}, 2, 3);

  const Grid<double> inOrder[] = {
      fields.d50,           fields.d90,
      fields.inSituVoids,   fields.depositionVoids,
      fields.bedLimit,      fields.previousChange,
      fields.appliedChange, fields.cellChange,
      fields.concentration, fields.adaptation,
      fields.spare,         table.cornerBedChange(100, real.data(), 2, 3)};
  for (std::size_t f = 0; f < std::size(inOrder); ++f)
    EXPECT_EQ(&inOrder[f](1, 1), &real[2 + 6 * f]) << f;
  EXPECT_EQ(&table.cellBedChange(100, real.data(), 2, 3)(1, 1), &fields.cellChange(1, 1));
  EXPECT_EQ(&fields.bedCode(2, 3), &integer[1 + 5]);

  table.reserve(1, false, 10, 4, nextReal, nextInteger);  // one element for each
  EXPECT_EQ(nextReal, 3 + 12 * 7);
  EXPECT_EQ(nextInteger, 2 + 7);
}

TEST(DomainFieldTable, RefusesStretchesThatPositionsCannotCount) {
  // The position behind the fields may be 2^31 - 1: 12 x 178,956,970 elements from position 7 on.
  const struct {
    std::int32_t n, m, nextReal, nextInteger;
    bool isReserved;
  } cases[] = {{178956970, 1, 7, 1, true},   {178956970, 1, 8, 1, false},
               {178956971, 1, 1, 1, false},  {65536, 65537, 1, 1, false},
               {3, 3, 1, 2147483640, false}, {3, 3, 0, 1, false},
               {3, 3, 1, 0, false},          {-3, -3, 1, 1, false},
               {-3, 3, 1, 1, false},         {3, -3, 1, 1, false}};
  for (const auto& c : cases) {
    DomainFieldTable table;
    std::int32_t nextReal = c.nextReal;
    std::int32_t nextInteger = c.nextInteger;
    EXPECT_EQ(table.reserve(1, true, c.n, c.m, nextReal, nextInteger), c.isReserved) << c.n;
    EXPECT_EQ(nextReal == c.nextReal && nextInteger == c.nextInteger, !c.isReserved) << c.n;
  }
}

}  // namespace
}  // namespace nivaro
