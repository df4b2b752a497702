#include "files/termination.hpp"

#include <gtest/gtest.h>

#include <string>

#include "files/pause.hpp"
#include "support/test_process.hpp"

namespace nivaro {
namespace {

class TerminationTest : public testing::Test {
 protected:
  int exitCode() {
    return test::exitCodeOf([&] { termination.exits(); });
  }

  test::ScriptedConsole console;
  test::RecordingProcess process;
  Termination termination{console, process};
};

TEST_F(TerminationTest, WaitsForEnterOnceStartedUnlessNobodyCanPressIt) {
  console.answers = {"", "left"};
  EXPECT_EQ(exitCode(), 0);
  EXPECT_EQ(console.output, "\nPROCESS EXITING WITHOUT PROMPT\n\n");
  EXPECT_EQ(console.answers.size(), 2u);

  termination.switchOnPromptAndExitCode();
  console.output.clear();
  EXPECT_EQ(exitCode(), 1);
  EXPECT_EQ(console.output, "\nPress Enter to Close\n");
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

TEST_F(TerminationTest, SaysWhyAnUnansweredQuestionEndsTheRun) {
  int hooks = 0;
  termination.addHook([&] { ++hooks; });
  console.open("Close it? ");
  EXPECT_THROW(termination.endUnanswered("Close it?"), test::ProcessEnded);
  EXPECT_EQ(console.output,
            "Close it? \n"
            "Standard input has ended, so nobody can answer: Close it?\n"
            "The run ends here.\n");
  EXPECT_EQ(hooks, 1);
}

TEST(Pause, TellsWhetherSomebodyPressedEnter) {
  test::ScriptedConsole console;
  console.answers = {""};
  EXPECT_TRUE(pauseRun(console));
  EXPECT_FALSE(pauseRun(console));
  EXPECT_EQ(console.output, "\nPress Enter to Continue\n\nPress Enter to Continue\n");
}

}  // namespace
}  // namespace nivaro
