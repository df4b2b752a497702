#include "interface/domain_field_table.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace nivaro {
namespace {

TEST(DomainFieldTable, InactiveDomainGetsOneElementForEachField) {
  DomainFieldTable table;
  std::int32_t nextReal = 101;
  std::int32_t nextInteger = 7;

  table.reserve(100, false, 10, 4, nextReal, nextInteger);

  EXPECT_EQ(table.row(100).real.back(), 112);
  EXPECT_EQ(table.row(100).bedCode, 7);
  EXPECT_EQ(nextReal, 113);
  EXPECT_EQ(nextInteger, 8);
}

TEST(DomainFieldTable, ActiveDomainGetsTwelveRealStretchesInOrderAndAnIntegerOne) {
  DomainFieldTable table;
  std::int32_t nextReal = 3;
  std::int32_t nextInteger = 2;
  table.reserve(5, true, 2, 3, nextReal, nextInteger);
  EXPECT_EQ(nextReal, 3 + 12 * 6);
  EXPECT_EQ(nextInteger, 2 + 6);
  std::vector<double> real(80);
  std::vector<std::int32_t> integer(20);

  const SedimentFields fields = table.fields(5, {real.data(), integer.data()}, 2, 3);

  const Grid<double> inOrder[] = {
      fields.d50,           fields.d90,
      fields.inSituVoids,   fields.depositionVoids,
      fields.bedLimit,      fields.previousChange,
      fields.appliedChange, fields.cellChange,
      fields.concentration, fields.adaptation,
      fields.spare,         table.cornerBedChange(5, real.data(), 2, 3)};
  for (std::size_t f = 0; f < std::size(inOrder); ++f)
    EXPECT_EQ(&inOrder[f](1, 1), &real[2 + 6 * f]) << f;
  EXPECT_EQ(&table.cellBedChange(5, real.data(), 2, 3)(1, 1), &fields.cellChange(1, 1));
  EXPECT_EQ(&fields.bedCode(2, 3), &integer[1 + 5]);
  EXPECT_EQ(&fields.d90(2, 1) - &fields.d90(1, 1), 1);  // the first index varies fastest
}

}  // namespace
}  // namespace nivaro
