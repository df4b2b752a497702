#include <gmock/gmock.h>

#include <cmath>
#include <sstream>

#include "mesh.hpp"
#include "module_library.hpp"
#include "profile.hpp"
#include "progress.hpp"
#include "support/temp_folder.hpp"
#include "this_system.hpp"

namespace host {
namespace {

using nivaro::test::TempFolder;
using testing::ElementsAre;
using testing::HasSubstr;

// Two columns and two rows without the north-east cell. Nodes go along y within x, as the points;
// elements go along x within y, as the module walks its flags.
TEST(Mesh, NodesFollowThePointsAndElementsFollowTheFlags) {
  const GridFrame grid{2, 2, 10.0, 100, 0};
  BedArrays bed = bedArrays({}, grid);
  bed.code(4, 4) = 0;
  bed.zpts(2, 2) = 1.5;

  const Mesh mesh = makeMesh(grid, bed.code);

  EXPECT_THAT(mesh.pointI, ElementsAre(2, 3, 4, 2, 3, 4, 2, 3));
  EXPECT_THAT(mesh.pointJ, ElementsAre(2, 2, 2, 3, 3, 3, 4, 4));
  EXPECT_EQ(meshText(mesh, grid, bed.zpts),
            "MESH2D\n"
            "E4Q 1 1 4 5 2 1\n"
            "E4Q 2 4 7 8 5 1\n"
            "E4Q 3 2 5 6 3 1\n"
            "ND 1 100.0000 0.0000 -1.50000\n"
            "ND 2 100.0000 10.0000 0.00000\n"
            "ND 3 100.0000 20.0000 0.00000\n"
            "ND 4 110.0000 0.0000 0.00000\n"
            "ND 5 110.0000 10.0000 0.00000\n"
            "ND 6 110.0000 20.0000 0.00000\n"
            "ND 7 120.0000 0.0000 0.00000\n"
            "ND 8 120.0000 10.0000 0.00000\n");
}

// Depths below the plane at 0, 1, 2: before 1, 1, 1 and computed 0, 2, 4. At 0.5 and 2 that is
// 1 and 4 against 2 and 2 measured: errors 1 and 2, and 1 and 1 for "no change".
TEST(Comparison, RmsAndSkillOfInterpolatedDepths) {
  std::vector<ProfilePoint> profile(3);
  for (std::size_t k = 0; k < 3; ++k) {
    const auto x = static_cast<double>(k);
    profile[k] = {.distance = x, .bedBefore = 9, .bed = 10 - 2 * x, .plane = 10};
  }

  const Comparison result = compare(profile, {{0.5, 2}, {2, 2}});

  EXPECT_THAT(result.computed, ElementsAre(1, 4));
  EXPECT_DOUBLE_EQ(result.rms, std::sqrt(2.5));
  EXPECT_DOUBLE_EQ(result.rmsNoChange, 1);
  EXPECT_DOUBLE_EQ(result.skill(), -1.5);
  EXPECT_THROW(compare(profile, {{2.1, 0}}), CaseError);
}

TEST(Comparison, MeasuredFilesMayHaveCommentsAndColumnNames) {
  const TempFolder folder;
  const auto points =
      readMeasured(folder.write("m.csv", "# from a figure\r\nx,depth\r\n\r\n1.5, 0.02\r\n2,-3e-1"));
  ASSERT_EQ(points.size(), 2u);
  EXPECT_EQ(points[0].depth, 0.02);
  EXPECT_EQ(points[1].depth, -0.3);
  EXPECT_THROW(readMeasured(folder.write("m.csv", "1,2\n3;4\n")), CaseError);
  EXPECT_THROW(readMeasured(folder.write("m.csv", "x,depth\n")), CaseError);
}

constexpr Progress::Clock::time_point kStart{};

TEST(Progress, WritesPlainLinesEveryTenthWhereOutputIsNoTerminal) {
  std::ostringstream out;
  Progress progress(out, false, 10, kStart);
  for (int k = 0; k <= 400; ++k) progress.show(0.025 * k, kStart + std::chrono::seconds(k));
  progress.finish();

  const std::string text = out.str();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 11);
  EXPECT_EQ(text.find('\r'), std::string::npos);
  // 100 s for the first quarter of the way: 2.5 h is past the line of 2 h at 80 s, 320 s to go.
  EXPECT_THAT(text, HasSubstr("  20 %   2.00 of 10.00 h   about 5 min 20 s left\n"));
  EXPECT_THAT(text, HasSubstr(" 100 %   10.00 of 10.00 h   took 6 min 40 s\n"));
}

TEST(Progress, RewritesOneLineOnATerminal) {
  std::ostringstream out;
  Progress progress(out, true, 10, kStart);
  for (const int hour : {1, 2, 10})  // the second is too soon to be read
    progress.show(hour, kStart + std::chrono::milliseconds(10 * hour));
  progress.finish();

  EXPECT_EQ(out.str(),
            "\r  10 %   1.00 of 10.00 h   about 1 s left\033[K"
            "\r 100 %   10.00 of 10.00 h   took 1 s\033[K\n");
}

TEST(ModuleLibrary, ALibraryThatIsNoModuleIsNamedWithWhatItLacks) {
  EXPECT_THROW(ModuleLibrary("/no/such/module.so"), LibraryError);
  EXPECT_THAT([] { ModuleLibrary{nivaro::test::kSomeLibrary}; },
              testing::ThrowsMessage<LibraryError>(
                  testing::AllOf(HasSubstr(std::string(nivaro::test::kSomeLibrary) +
                                           " is no morphology module: it lacks "
                                           "QVMOR_INITIALISE_S1, QVMOR_INITIALISE_S2, "),
                                 HasSubstr("DMESSAGES."))));
}

}  // namespace
}  // namespace host
