#include "platform/console.hpp"

#include <cstdio>

#include "platform/standard_input.hpp"
#include "platform/standard_output.hpp"

namespace nivaro {
namespace {

// Nobody types a line of this length: what comes is not from a keyboard, and may never end.
constexpr std::size_t kLongestAnswer = 1'000'000;

}  // namespace

// One call for text and line end, so that lines stay whole where the host writes between them.
void StandardConsole::line(std::string_view text) {
  writeStandardOutput(std::string(text).append("\n"));
}

void StandardConsole::open(std::string_view text) {
  writeStandardOutput(text);
}

bool StandardConsole::readLine(std::string& answer) {
  answer.clear();
  int c = readStandardInput();
  if (c == EOF) return false;
  for (; c != EOF && c != '\n'; c = readStandardInput()) {
    if (answer.size() == kLongestAnswer) return false;
    answer += static_cast<char>(c);
  }
  if (answer.ends_with('\r')) answer.pop_back();
  return true;
}

}  // namespace nivaro
