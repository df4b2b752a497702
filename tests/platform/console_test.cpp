// The real console and the real end of the process, in processes of their own.
#include "platform/console.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/process.hpp"
#include "platform/unit_table.hpp"
#include "support/temp_folder.hpp"

namespace nivaro {
namespace {

constexpr OpenOptions kReplace{OpenOptions::Form::Formatted, OpenOptions::Status::Replace,
                               OpenOptions::Action::Write};

TEST(StandardConsole, LeavesTheHostsOwnBrokenPipesAlone) {
  const auto breakAPipe = [] {
    StandardConsole().line("");
    int ends[2];
    if (pipe(ends) != 0) return;
    close(ends[0]);
    if (write(ends[1], "x", 1) < 0) std::exit(7);
  };
  EXPECT_EXIT(breakAPipe(), testing::KilledBySignal(SIGPIPE), "");
}

TEST(StandardConsole, ReadsLinesToTheEndOfInput) {
  const test::TempFolder folder;
  const std::string input = folder.write("input", "yes\r\n\nlast");
  const auto readAll = [&] {
    StandardConsole console;
    if (std::freopen(input.c_str(), "r", stdin) == nullptr) return;
    std::string seen;
    for (std::string answer; console.readLine(answer);) seen += '[' + answer + ']';
    std::exit(seen == "[yes][][last]" ? 7 : 1);
  };
  EXPECT_EXIT(readAll(), testing::ExitedWithCode(7), "");
}

TEST(RealProcess, EndsWithTheFilesOfStaticObjectsWhole) {
  const test::TempFolder folder;
  const auto endWithOpenFile = [&] {
    static UnitTable units;
    units.open(1, folder.path("file"), kReplace);
    units.find(1)->writeRecord("whole");
    RealProcess().end(7);
  };
  EXPECT_EXIT(endWithOpenFile(), testing::ExitedWithCode(7), "");
  EXPECT_EQ(folder.read("file"), "whole\n");
}

}  // namespace
}  // namespace nivaro
