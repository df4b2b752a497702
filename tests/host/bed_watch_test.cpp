#include "bed_watch.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

namespace host {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

// A level bed at 0 under 1 m of water, rock 0.5 m below it.
class BedWatchTest : public testing::Test {
 protected:
  BedWatchTest()
      : bed(bedArrays(BedShape{}, grid)), level(grid, 1.0), limit(grid, -0.5), change(grid, 0.0) {}

  std::vector<PlacedMessage> lower(BedWatch& watch, int i, int j, double by) {
    bed.zc(i, j) += by;
    change(i, j) = -by;
    auto messages = watch.afterStep(bed, change.data(), level, 2.0);
    change(i, j) = 0;
    return messages;
  }

  GridFrame grid{40, 5, 10.0, 100, 200};
  BedArrays bed;
  Field<double> level, limit, change;
};

TEST_F(BedWatchTest, TellsOnceWhereTheBedComesDownToItsLimit) {
  limit(4, 20) = 0.0;  // stands at its limit from the start: no news
  BedWatch watch(grid, bed, limit.data());

  EXPECT_THAT(lower(watch, 5, 5, 0.09), SizeIs(0));
  bed.zc(5, 5) = 0.45;
  const auto first = lower(watch, 5, 5, 0.05);
  ASSERT_THAT(first, SizeIs(1));
  EXPECT_THAT(first[0].message.line1, HasSubstr("CHECK - Bed worn down to its limit of -0.50 m"));
  // Cell (5, 5) is the third of the model along both axes.
  EXPECT_EQ(first[0].x, 125);
  EXPECT_EQ(first[0].y, 225);

  EXPECT_THAT(lower(watch, 5, 5, 0.05), SizeIs(0));
  bed.zc(5, 6) = 0.45;
  EXPECT_THAT(lower(watch, 5, 6, 0.05), SizeIs(0));  // its neighbour has spoken for it
  bed.zc(5, 30) = 0.45;
  EXPECT_THAT(lower(watch, 5, 30, 0.05), SizeIs(1));  // far away
}

TEST_F(BedWatchTest, WarnsOfStepsThatChangeMuchOfTheDepth) {
  BedWatch watch(grid, bed, limit.data());

  EXPECT_THAT(lower(watch, 5, 5, 0.1), SizeIs(0));  // of 1.1 m
  const auto messages = lower(watch, 5, 5, 0.2);    // of 1.3 m
  ASSERT_THAT(messages, SizeIs(1));
  EXPECT_THAT(messages[0].message.line1, HasSubstr("WARNING - Bed changed by 0.200 m in one step"));

  level(5, 30) = 0.1;
  EXPECT_THAT(lower(watch, 5, 30, 0.08), SizeIs(0));  // the water's edge is left out
}

TEST_F(BedWatchTest, PlacesTheLargestChanges) {
  BedWatch watch(grid, bed, limit.data());
  EXPECT_THAT(watch.extremes(bed, 3), SizeIs(0));

  bed.zc(3, 7) = -0.25;
  bed.zc(6, 9) = 0.4;
  const auto messages = watch.extremes(bed, 3);
  ASSERT_THAT(messages, SizeIs(2));
  EXPECT_EQ(messages[0].message.line1, "CHECK - Deepest scour 0.40 m");
  EXPECT_EQ(messages[0].x, 165);
  EXPECT_EQ(messages[1].message.line1, "CHECK - Highest deposit 0.25 m");
  EXPECT_EQ(messages[1].y, 205);
}

// A quarter turn takes x to the map's north and y to its west.
TEST(GridOnTheMap, TurnsAboutItsCorner) {
  GridFrame grid{40, 5, 10.0, 100, 200};
  EXPECT_EQ(grid.toMap(130, 210), std::make_pair(130.0, 210.0));

  grid.map = MapPlace{5000, 7000, 1.5707963267948966};
  const auto [x, y] = grid.toMap(130, 210);
  EXPECT_NEAR(x, 5000 - 10, 1e-9);
  EXPECT_NEAR(y, 7000 + 30, 1e-9);
}

}  // namespace
}  // namespace host
