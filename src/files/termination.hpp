// The end of a run: everything is closed, the person at the console sees what happened, and the
// whole process, the host included, ends.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "platform/console.hpp"
#include "platform/process.hpp"

namespace nivaro {

class Termination {
 public:
  Termination(Console& console, Process& process);

  // Hooks run in the order in which they were added. A hook is taken off the list before it runs,
  // so that a hook that itself ends the run is not run twice.
  void addHook(std::function<void()> hook);

  // Before this, a run ends without a prompt and with exit code 0; after it, with both the prompt
  // and exit code 1.
  void switchOnPromptAndExitCode();

  // The end of a failed run: hooks, prompt, exit code. Texts about the cause are the
  // caller's and come before it.
  [[noreturn]] void exits();

  // For a question that nobody can answer because standard input has ended: says so, runs the
  // hooks and ends with exit code 1. `question` is what was asked, as it stands on the screen.
  [[noreturn]] void endUnanswered(std::string_view question);

 private:
  void runHooks();

  Console& console_;
  Process& process_;
  std::vector<std::function<void()>> hooks_;
  bool promptAtExit_ = false;
  bool exitCodeSwitch_ = false;
};

}  // namespace nivaro
