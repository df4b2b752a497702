#include "bed_watch.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace host {
namespace {

using testing::SizeIs;

// A level bed at 0 under 1 m of water, rock 0.5 m below it.
struct BedWatchTest : testing::Test {
  // The message about a cell whose bed goes down, blank when there is none.
  std::string lower(BedWatch& watch, int i, int j, double from, double by) {
    bed.zc(i, j) = from + by;
    change(i, j) = -by;
    messages = watch.afterStep(bed, change.data(), level, 2.0);
    change(i, j) = 0;
    return messages.empty() ? "" : messages.front().message.line1;
  }

  GridFrame grid{40, 5, 10.0, 100, 200};
  BedArrays bed = bedArrays(BedShape{}, grid);
  Field<double> level{grid, 1.0}, limit{grid, -0.5}, change{grid, 0.0};
  std::vector<PlacedMessage> messages;
};

TEST_F(BedWatchTest, TellsOnceWhereTheBedComesDownToItsLimit) {
  limit(4, 20) = 0.0;  // stands at its limit from the start: no news
  BedWatch watch(grid, bed, limit.data());

  EXPECT_EQ(lower(watch, 5, 5, 0, 0.09), "");
  EXPECT_EQ(lower(watch, 5, 5, 0.45, 0.05), "CHECK - Bed worn down to its limit of -0.50 m");
  // Cell (5, 5) is the third of the model along both axes.
  EXPECT_EQ(messages[0].x, 125);
  EXPECT_EQ(messages[0].y, 225);

  EXPECT_EQ(lower(watch, 5, 5, 0.5, 0.05), "");
  EXPECT_EQ(lower(watch, 5, 17, 0.45, 0.05), "");  // a neighbour has spoken for it
  EXPECT_NE(lower(watch, 5, 18, 0.45, 0.05), "");  // far away
}

TEST_F(BedWatchTest, WarnsOfStepsThatChangeMuchOfTheDepth) {
  BedWatch watch(grid, bed, limit.data());

  EXPECT_EQ(lower(watch, 5, 5, 0, 0.1), "");  // of 1.1 m
  EXPECT_EQ(lower(watch, 5, 5, 0.1, 0.2),
            "WARNING - Bed changed by 0.200 m in one step, at a depth of 1.30 m");
  level(5, 30) = 0.1;
  EXPECT_EQ(lower(watch, 5, 30, 0, 0.08), "");  // the water's edge is left out
}

TEST_F(BedWatchTest, PlacesTheLargestChanges) {
  BedWatch watch(grid, bed, limit.data());
  EXPECT_THAT(watch.extremes(bed, 3), SizeIs(0));

  bed.zc(3, 7) = -0.25;
  bed.zc(6, 9) = 0.4;
  messages = watch.extremes(bed, 3);
  ASSERT_THAT(messages, SizeIs(2));
  EXPECT_EQ(messages[0].message.line1, "CHECK - Deepest scour 0.40 m");
  EXPECT_EQ(messages[0].x, 165);
  EXPECT_EQ(messages[1].message.line1, "CHECK - Highest deposit 0.25 m");
  EXPECT_EQ(messages[1].y, 205);
}

}  // namespace
}  // namespace host
