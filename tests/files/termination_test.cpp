#include "files/termination.hpp"

#include "files_fixture.hpp"

namespace nivaro {
namespace {

struct TerminationTest : test::FilesTest {
  int exitCode() {
    return test::exitCodeOf([&] { termination.exits(); });
  }
};

TEST_F(TerminationTest, WaitsForEnterOnceStartedUnlessNobodyCanPressIt) {
  console.answers = {"", "left"};
  EXPECT_EQ(exitCode(), 0);
  EXPECT_EQ(output, "\nPROCESS EXITING WITHOUT PROMPT\n\n");
  EXPECT_EQ(console.answers.size(), 2u);

  termination.switchOnPromptAndExitCode();
  output.clear();
  EXPECT_EQ(exitCode(), 1);
  EXPECT_EQ(output, "\nPress Enter to Close\n");
  EXPECT_EQ(console.answers.size(), 1u);
  console.answers.clear();
  EXPECT_EQ(exitCode(), 1);
}

TEST_F(TerminationTest, RunsEachHookOnceInOrderAlsoWhenOneEndsTheRunItself) {
  std::string ran;
  termination.addHook([&] {
    ran += "first ";
    termination.exits();
  });
  termination.addHook([&] { ran += "second "; });
  exitCode();
  exitCode();
  EXPECT_EQ(ran, "first second ");
}

}  // namespace
}  // namespace nivaro
