#include "files/termination.hpp"

#include <string>
#include <utility>

#include "files/pause.hpp"

namespace nivaro {

Termination::Termination(Console& console, Process& process)
    : console_(console), process_(process) {}

void Termination::addHook(std::function<void()> hook) {
  hooks_.push_back(std::move(hook));
}

void Termination::switchOnPromptAndExitCode() {
  promptAtExit_ = true;
  exitCodeSwitch_ = true;
}

void Termination::exits() {
  runHooks();
  console_.line("");
  if (promptAtExit_) {
    pauseWithPrompt(console_, kClosePrompt);
  } else {
    console_.line("PROCESS EXITING WITHOUT PROMPT");
    console_.line("");
  }
  endProcess(process_, exitCodeSwitch_ ? 1 : 0);
}

void Termination::endUnanswered(std::string_view question) {
  console_.line("");
  console_.line("Standard input has ended, so nobody can answer: " + std::string(question));
  console_.line("The run ends here.");
  runHooks();
  endProcess(process_, 1);
}

void Termination::runHooks() {
  while (!hooks_.empty()) {
    const std::function<void()> hook = std::move(hooks_.front());
    hooks_.erase(hooks_.begin());
    hook();
  }
}

}  // namespace nivaro
