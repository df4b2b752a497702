// Stand-ins for the console and the process end, so that a test can answer questions and see the
// run end without ending itself.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "platform/console.hpp"
#include "platform/process.hpp"

namespace nivaro::test {

// Keeps all output, answers from a script; standard input has ended when the script has. `beforeAnswer` is
// what the person does before an answer.
class ScriptedConsole final : public Console {
 public:
  void line(std::string_view text) override {
    output += text;
    output += '\n';
  }
  void open(std::string_view text) override { output += text; }
  bool readLine(std::string& answer) override {
    if (beforeAnswer) beforeAnswer();
    if (answers.empty()) return false;
    answer = answers.front();
    answers.pop_front();
    return true;
  }

  bool shows(std::string_view text) const { return output.find(text) != std::string::npos; }

  std::string output;
  std::deque<std::string> answers;
  std::function<void()> beforeAnswer;
};

struct ProcessEnded {
  int exitCode;
};

class RecordingProcess final : public Process {
 public:
  [[noreturn]] void end(int exitCode) override { throw ProcessEnded{exitCode}; }
  std::string environment(const char* name) const override {
    const auto found = variables.find(name);
    return found == variables.end() ? "" : found->second;
  }

  std::map<std::string, std::string> variables;
};

// The exit code of an action that ends the run; -1 when it does not.
template <typename Action>
int exitCodeOf(Action action) {
  try {
    action();
    return -1;
  } catch (const ProcessEnded& ended) {
    return ended.exitCode;
  }
}

}  // namespace nivaro::test
